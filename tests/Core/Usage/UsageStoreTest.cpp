#include "Core/Usage/UsageStore.h"

#include "Core/Usage/HistoryLines.h"
#include "tests/Support/TemporaryFolder.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <gmock/gmock.h>
#include <limits>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace pacelet {
namespace {

using ::testing::ElementsAre;
using testing::TemporaryFolder;

constexpr std::int64_t day(int year, unsigned month, unsigned dayOfMonth) {
    using namespace std::chrono;
    const sys_days date =
        std::chrono::year{year} / std::chrono::month{month} / std::chrono::day{dayOfMonth};
    return date.time_since_epoch().count() * minutesPerDay;
}

TimePoint atMinute(std::int64_t minute, double seconds = 0) {
    return fromUnixTime(static_cast<double>(minute) * secondsPerMinute + seconds);
}

MinuteRecord minuteAt(std::int64_t t, double cpu = 1) {
    return {t, cpu, cpu, 0, 0, 0, 1};
}

std::vector<std::string> namesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator{folder}) {
        names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
}

/// A store in a folder of its own.
class UsageStores : public ::testing::Test {
protected:
    /// Where and why the action failed.
    template<typename Action>
    std::pair<std::filesystem::path, std::error_code> failureOf(Action&& action) {
        try {
            action();
        } catch (const UsageStoreError& error) {
            return {error.path(), error.code()};
        }
        return {};
    }

    const TemporaryFolder folder;
    const UsageStore store{folder.path()};
};

TEST_F(UsageStores, AppendToTheFileOfTheRecordsOwnDay) {
    // Neither a far time zone nor a locale may move a record to another day.
    ::setenv("TZ", "Pacific/Kiritimati", 1);
    ::tzset();
    const UsageStore deep{folder.path() / "deep" / "Pacelet"};
    const std::int64_t midnight = day(2026, 3, 7);
    for (const std::int64_t t :
         {midnight - 2, midnight - 1, midnight, day(2024, 2, 29), std::int64_t{-1}}) {
        deep.append(minuteAt(t));
    }
    ::unsetenv("TZ");
    ::tzset();
    EXPECT_THAT(namesIn(deep.directory),
                ElementsAre("usage-1969-12-31.jsonl", "usage-2024-02-29.jsonl",
                            "usage-2026-03-06.jsonl", "usage-2026-03-07.jsonl"));
    EXPECT_EQ(folder.read("deep/Pacelet/usage-2026-03-06.jsonl"),
              HistoryLines::encode(minuteAt(midnight - 2)) +
                  HistoryLines::encode(minuteAt(midnight - 1)));
}

TEST_F(UsageStores, LoadFromTheMinuteOfADateOnInOrder) {
    const std::int64_t noon = day(2026, 3, 6) + 720;
    const std::int64_t tomorrow = noon + minutesPerDay;
    for (const MinuteRecord& each :
         {minuteAt(noon + 9, 1), minuteAt(noon, 2), minuteAt(noon + 9, 3), minuteAt(noon, 4),
          minuteAt(noon - 1), minuteAt(noon - minutesPerDay), minuteAt(tomorrow, 5)}) {
        store.append(each);
    }
    EXPECT_THAT(store.load(atMinute(noon, 59.9)),
                ElementsAre(minuteAt(noon, 2), minuteAt(noon, 4), minuteAt(noon + 9, 1),
                            minuteAt(noon + 9, 3), minuteAt(tomorrow, 5)))
        << "within a minute the order of the file stays";
    EXPECT_EQ(store.load(distantPast).size(), 7U);
    EXPECT_TRUE(store.load(atMinute(noon + 2 * minutesPerDay)).empty());

    // A file of an earlier day is not even opened, so what stands in it does not count.
    folder.write("usage-2026-03-05.jsonl", HistoryLines::encode(minuteAt(tomorrow)));
    // One named otherwise is compared as text: later than all dates.
    folder.write("usage-old.jsonl", HistoryLines::encode(minuteAt(tomorrow - 1)));
    for (const char* name :
         {"usage-2026-03-09.txt", "usage-2026-03-09.JSONL", ".usage-2026-03-09.jsonl"}) {
        folder.write(name, HistoryLines::encode(minuteAt(tomorrow)));
    }
    EXPECT_THAT(store.load(atMinute(noon + 10)),
                ElementsAre(minuteAt(tomorrow - 1), minuteAt(tomorrow, 5)));
}

TEST_F(UsageStores, LoseOnlyWhatItCannotRead) {
    EXPECT_TRUE((UsageStore{folder.path() / "missing"}.load(distantPast).empty()));
    const std::string good = HistoryLines::encode(minuteAt(7));
    folder.write("usage-2026-03-01.jsonl", good + "{\"t\":8,\"cp\n" + good);
    folder.write("usage-2026-03-02.jsonl", good + "\xFF");
    std::filesystem::create_directory(folder.path() / "usage-2026-03-03.jsonl");
    std::filesystem::create_symlink("nowhere", folder.path() / "usage-2026-03-04.jsonl");
    ASSERT_EQ(::mkfifo((folder.path() / "usage-2026-03-05.jsonl").c_str(), 0600), 0);
    folder.write("usage-2026-03-06.jsonl", good.substr(0, good.size() - 1));
    std::ofstream{folder.path() / "usage-2026-03-07.jsonl"}.close();
    std::filesystem::resize_file(folder.path() / "usage-2026-03-07.jsonl", std::uintmax_t{1} << 40);
    EXPECT_EQ(store.load(distantPast), std::vector(3, minuteAt(7)));
}

TEST_F(UsageStores, PruneByNameAndStopAtTheFirstFailure) {
    for (const char* name : {"usage-.jsonl", "usage-2026-02-27.jsonl", "usage-2026-02-28.jsonl",
                             "usage-2026-03-01.jsonl", "usage-old.jsonl", "usage-2020.txt"}) {
        folder.write(name, "");
    }
    const TimePoint now = atMinute(day(2026, 3, 31), 86'399);
    store.prune(30, now);
    EXPECT_THAT(namesIn(folder.path()),
                ElementsAre("usage-2020.txt", "usage-2026-03-01.jsonl", "usage-old.jsonl"));
    UsageStore{folder.path() / "missing"}.prune(30, now);

    // A folder with something in it cannot be removed as a file.
    folder.write("usage-2026-01-02.jsonl/keep", "");
    folder.write("usage-2026-01-01.jsonl", "");
    folder.write("usage-2026-01-03.jsonl", "");
    const auto failure = failureOf([&] { store.prune(30, now); });
    EXPECT_EQ(failure.first, folder.path() / "usage-2026-01-02.jsonl");
    EXPECT_TRUE(failure.second);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "usage-2026-01-01.jsonl"));
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "usage-2026-01-03.jsonl"));
    EXPECT_THROW(store.clear(), UsageStoreError);
    std::filesystem::remove_all(folder.path() / "usage-2026-01-02.jsonl");
    store.clear();
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("usage-2020.txt"));
}

TEST_F(UsageStores, AreForTheirOwnerAlone) {
    namespace fs = std::filesystem;
    const auto others = [&](const fs::path& path) {
        return (fs::status(folder.path() / path).permissions() &
                (fs::perms::group_all | fs::perms::others_all)) != fs::perms::none;
    };
    const UsageStore deep{folder.path() / "shared" / "own"};
    const auto now = day(2026, 3, 6);
    deep.append(minuteAt(now));
    EXPECT_FALSE(others("shared/own") || others("shared/own/usage-2026-03-06.jsonl"));
    // Those of earlier days, before anybody thought of it.
    folder.write("shared/own/usage-2026-03-05.jsonl", "");
    for (const char* path : {"shared/own/usage-2026-03-05.jsonl",
                             "shared/own/usage-2026-03-06.jsonl", "shared/own", "shared"}) {
        fs::permissions(folder.path() / path, fs::perms::all);
    }
    deep.append(minuteAt(now));
    EXPECT_FALSE(others("shared/own/usage-2026-03-06.jsonl"));
    deep.prune(30, atMinute(now));
    EXPECT_FALSE(others("shared/own") || others("shared/own/usage-2026-03-05.jsonl"));
    EXPECT_EQ(fs::status(deep.directory).permissions(), fs::perms::owner_all);
    EXPECT_TRUE(others("shared")) << "the folder of all programs' data is not ours";
}

TEST_F(UsageStores, TellWhyTheyCouldNotAppend) {
    folder.write("file", "");
    const MinuteRecord good = minuteAt(day(2026, 3, 6));
    EXPECT_THROW((UsageStore{folder.path() / "file" / "below"}.append(good)), UsageStoreError);

    MinuteRecord odd = good;
    odd.cpuMax = std::numeric_limits<double>::infinity();
    EXPECT_THROW(store.append(odd), UsageStoreError);
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("file"));

    const auto path = folder.path() / "usage-2026-03-06.jsonl";
    std::filesystem::create_directory(path);
    EXPECT_EQ(failureOf([&] { store.append(good); }),
              (std::pair{path, std::make_error_code(std::errc::is_a_directory)}));
    std::filesystem::remove(path);
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_THROW(store.append(good), UsageStoreError) << "and does not wait for a reader";
}

TEST_F(UsageStores, WriteAnewWhatTheyCannotOpen) {
    const MinuteRecord good = minuteAt(day(2026, 3, 6));
    // A link to a file that is yet to be made cannot be opened, but can be written.
    std::filesystem::create_symlink("target", folder.path() / "usage-2026-03-06.jsonl");
    store.append(good);
    std::filesystem::permissions(folder.path() / "target", std::filesystem::perms::all);
    store.append(good);
    EXPECT_EQ(std::filesystem::status(folder.path() / "target").permissions(),
              std::filesystem::perms::all)
        << "what a link leads to is not ours";
    EXPECT_EQ(folder.read("target"), HistoryLines::encode(good) + HistoryLines::encode(good));
}

TEST_F(UsageStores, EndALineThatWasTorn) {
    const MinuteRecord good = minuteAt(day(2026, 3, 6));
    const std::string line = HistoryLines::encode(good);
    for (const std::string& torn :
         {line.substr(0, line.size() - 1), line.substr(0, 20), line, std::string(8, '\0')}) {
        folder.write("usage-2026-03-06.jsonl", torn);
        store.append(good);
        EXPECT_EQ(folder.read("usage-2026-03-06.jsonl"),
                  torn + (torn.ends_with('\n') ? "" : "\n") + line);
        EXPECT_EQ(store.load(distantPast).back(), good);
    }
    // The disk is full in the middle of a line: as a limit on the size of files has it.
    folder.write("usage-2026-03-06.jsonl", line + "torn");
    const pid_t child = ::fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{line.size() + 10, line.size() + 10};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        bool failed = false;
        try {
            store.append(good);
        } catch (const UsageStoreError&) {
            failed = true;
        }
        ::_exit(failed ? 0 : 1);
    }
    int status = 1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(folder.read("usage-2026-03-06.jsonl"), line + "torn") << "no half line is left";
}

TEST_F(UsageStores, StopBeyondTheCalendar) {
    EXPECT_TRUE(store.load(fromUnixTime(-9e11)).empty()) << "far, but still a date";
    EXPECT_DEATH(store.load(fromUnixTime(1e30)), "calendar");
    EXPECT_DEATH(store.load(fromUnixTime(std::numeric_limits<double>::quiet_NaN())), "calendar");
    EXPECT_DEATH(store.append(minuteAt(std::numeric_limits<std::int64_t>::max())),
                 "time of a record");
}

} // namespace
} // namespace pacelet
