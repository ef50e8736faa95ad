#include "Hosts/Linux/Speed/NetworkQualityTool.h"

#include "Core/Internet/SpeedTest.h"
#include "Hosts/Linux/Speed/TransferLoop.h"
#include "tests/Hosts/Linux/Speed/ScriptedServer.h"
#include "tests/Support/ChildProgram.h"
#include "tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace pacelet::Linux {
namespace {

using namespace ::testing;
using pacelet::testing::Answer;
using pacelet::testing::answerOf;
using pacelet::testing::Answers;
using pacelet::testing::ScriptedServer;
using pacelet::testing::TemporaryFolder;

Shell::Output test(const SpeedServer& server, const std::string& seconds) {
    return NetworkQualityTool{server}.run({"-c", "-M", seconds});
}

TEST(NetworkQualityTool, TellsBothDirections) {
    const ScriptedServer server{{}};
    const Shell::Output output = test({server.configuration()}, "10");
    ASSERT_EQ(output.status, 0) << output.stderr;
    const SpeedResult result = SpeedTest::parse(output.stdout, {});
    EXPECT_GT(result.downloadMbps, 1);
    EXPECT_GT(result.uploadMbps, 1);
    EXPECT_GT(result.baseRTTms.value_or(0), 0);
    EXPECT_GT(result.responsivenessRPM.value_or(0), 0);
}

TEST(NetworkQualityTool, SaysWhatWentWrong) {
    using enum Answer::Ending;
    constexpr std::int64_t some = 2'000'000;
    constexpr std::int64_t endless = 1'000'000'000'000;
    const Answer unavailable{"HTTP/1.1 503 Service Unavailable\r\nContent-Length: 0\r\n\r\n"};
    const Answer loginPage{"HTTP/1.1 302 Found\r\nLocation: /small\r\nContent-Length: 0\r\n\r\n"};
    const Answer page{answerOf(13) + "<html></html>"};
    const struct {
        Answers faults;
        const char* seconds;
        const char* error;
    } rows[] = {
        {{{"/nq", unavailable}}, "25", "the server answers with status 503"},
        {{{"/nq", loginPage}}, "25", "the server answers with status 302"},
        {{{"/nq", page}}, "25", "the server's configuration does not read"},
        {{{"/nq", {"", 0, hangs}}}, "1", "the server does not answer"},
        {{{"/nq", {answerOf(endless), endless}}}, "25", "the server's answer is too long"},
        {{{"/small", unavailable}}, "25", "the server answers with status 503"},
        {{{"/small", {answerOf(endless), endless}}}, "25", "the server's answer is too long"},
        {{{"/small", {"", 0, hangs}}}, "1", "the server does not answer"},
        {{{"/large", unavailable}}, "3", "the server answers with status 503"},
        {{{"/large", page}}, "3", "the server's file is too small to load the line"},
        {{{"/large", {answerOf(2 * some), some}}}, "3", "transfer closed with 2000000 bytes"},
        {{{"/large", {answerOf(endless), some, resets}}}, "3", "Recv failure: Connection reset"},
        {{{"/large", {answerOf(endless), some, hangs}}}, "12", "nothing gets through any more"},
        {{{"/large", {"", 0, hangs}}}, "2", "nothing gets through"},
        {{{"/upload", unavailable}}, "3", "the server answers with status 503"},
        {{{"/upload", {"", some, resets}}}, "3", "reset by peer"},
    };
    for (const auto& [faults, seconds, error] : rows) {
        const ScriptedServer server{faults};
        const Shell::Output output = test({server.configuration()}, seconds);
        const std::string& path = faults.begin()->first;
        EXPECT_EQ(output.status, 1) << path << ": " << error;
        EXPECT_THAT(output.stderr, AllOf(StartsWith("networkQuality: "), HasSubstr(error))) << path;
        EXPECT_EQ(output.stdout, "");
    }
    EXPECT_THAT(test({"http://127.0.0.1:1/nq"}, "25").stderr, HasSubstr("Failed to connect"));
    EXPECT_EQ(NetworkQualityTool{{}}.run({"-c", "-M", "1s"}).status, 64);
}

TEST(NetworkQualityTool, EndsAtOnceWhenItIsStopped) {
    const ScriptedServer server{{}};
    NetworkQualityTool tool{{server.configuration()}};
    std::thread stopper{[&tool] {
        std::this_thread::sleep_for(std::chrono::milliseconds{300});
        tool.stop();
    }};
    EXPECT_EQ(tool.run({"-c", "-M", "25"}), (Shell::Output{1, "", "networkQuality: stopped\n"}));
    stopper.join();
}

/// The real protocol, and the certificates.
TEST(NetworkQualityTool, TrustsNobodyWhoCannotProveHisName) {
    const TemporaryFolder folder;
    const std::string base = "https://127.0.0.1:18443";
    folder.write("nq", fmt::format(R"({{"urls":{{"small_https_download_url":"{0}/small",)"
                                   R"("large_https_download_url":"{0}/large",)"
                                   R"("https_upload_url":"{0}/small"}}}})",
                                   base));
    folder.write("small", "x");
    std::filesystem::resize_file(folder.write("large", ""), std::uintmax_t{1} << 33);
    const std::string in = "cd " + folder.path().string() + " && ";
    ASSERT_EQ(std::system((in + "openssl req -x509 -newkey ec -pkeyopt "
                                "ec_paramgen_curve:prime256v1 -nodes -subj /CN=x -addext "
                                "subjectAltName=IP:127.0.0.1 -keyout key -out cert 2>/dev/null")
                              .c_str()),
              0);
    const pacelet::testing::ChildProgram server{{"nghttpd", "--address=127.0.0.1",
                                                 "--htdocs=" + folder.path().string(), "18443",
                                                 folder.path() / "key", folder.path() / "cert"},
                                                {}};
    Shell::Output trusting;
    ASSERT_TRUE(pacelet::testing::eventually([&] {
        trusting = test({base + "/nq", folder.path() / "cert"}, "2");
        return trusting.status == 0;
    })) << trusting.stderr;
    EXPECT_THAT(trusting.stdout, HasSubstr("dl_responsiveness"));
    EXPECT_THAT(test({base + "/nq"}, "2").stderr, HasSubstr("SSL certificate problem"));
}

} // namespace
} // namespace pacelet::Linux
