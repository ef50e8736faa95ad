#include "Core/Internet/LinkReader.h"

#include <atomic>
#include <barrier>
#include <gtest/gtest.h>
#include <limits>
#include <thread>

namespace pacelet {
namespace {

TEST(Link, GradesSignalsWithInclusiveBounds) {
    using enum SignalQuality;
    constexpr auto extreme = std::numeric_limits<std::int64_t>::max();
    const std::vector<std::pair<std::int64_t, SignalQuality>> rows{
        {extreme, excellent}, {0, excellent}, {-60, excellent}, {-61, good},     {-70, good},
        {-71, fair},          {-80, fair},    {-81, poor},      {-extreme, poor}};
    for (const auto& [rssi, quality] : rows) {
        EXPECT_EQ(WiFiLink{.rssi = rssi}.quality(), quality) << rssi;
    }
    EXPECT_LT(poor, excellent);
    EXPECT_EQ(label(fair), "Fair");
    EXPECT_EQ(label(WiFiBand::ghz2_4), "2.4 GHz");
    EXPECT_EQ(label(WiFiBand::unknown), "Unknown band");
}

/// What a radio says; the readings of the signal come one after the other, the last one for ever.
struct Radio {
    std::vector<std::int64_t> rssi;
    std::optional<int> band;
};

class FakeInterface final : public WiFiInterface {
public:
    explicit FakeInterface(Radio radio)
        : radio_{std::move(radio)} {}

    std::int64_t rssiValue() override {
        return radio_.rssi[std::min(calls_++, radio_.rssi.size() - 1)];
    }
    std::int64_t noiseMeasurement() override { return -92; }
    double transmitRate() override { return 866.5; }
    std::optional<int> channelBand() override { return radio_.band; }

private:
    Radio radio_;
    std::size_t calls_ = 0;
};

/// Lets a test send updates by itself, also after the monitor was cancelled.
class FakeMonitor final : public PathMonitor {
public:
    void start(const std::string& queueLabel, std::function<void(NetworkPath)> update) override {
        label = queueLabel;
        update_ = std::move(update);
        if (immediate) {
            update_(*immediate);
        }
    }
    void cancel() override {
        ++cancels;
        if (dropsHandler) {
            update_ = nullptr;
        }
    }
    std::function<void(NetworkPath)> handler() const { return update_; }

    std::optional<NetworkPath> immediate;
    bool dropsHandler = false;
    std::string label;
    std::atomic<int> cancels{0};

private:
    std::function<void(NetworkPath)> update_;
};

class FakeNetwork final : public NetworkLink {
public:
    std::unique_ptr<WiFiInterface> wifiInterface() override {
        return radio ? std::make_unique<FakeInterface>(*radio) : nullptr;
    }
    std::shared_ptr<PathMonitor> makePathMonitor() override { return std::move(monitor); }
    bool isExpensive() override { return false; }

    std::optional<Radio> radio;
    std::shared_ptr<FakeMonitor> monitor = std::make_shared<FakeMonitor>();
};

TEST(LinkReader, ReadsTheRadioWhileItIsAssociated) {
    const auto read = [](std::optional<Radio> radio) {
        FakeNetwork network;
        network.radio = std::move(radio);
        return LinkReader::wifi(network);
    };
    EXPECT_EQ(read(std::nullopt), std::nullopt);
    EXPECT_EQ(read(Radio{{0, -50}, 2}), std::nullopt) << "not associated";
    EXPECT_EQ(read(Radio{{-50, 0}, 2}), std::nullopt) << "association lost in between";
    EXPECT_EQ(read(Radio{{-50, -63}, 2}), (WiFiLink{-63, -92, 866.5, WiFiBand::ghz5}));
    using enum WiFiBand;
    const std::vector<std::pair<std::optional<int>, WiFiBand>> bands{
        {{}, unknown}, {0, unknown}, {1, ghz2_4},  {2, ghz5},
        {3, ghz6},     {4, unknown}, {-1, unknown}};
    for (const auto& [channel, band] : bands) {
        EXPECT_EQ(read(Radio{{-50}, channel})->band, band) << channel.value_or(-99);
    }
}

TEST(LinkReader, NamesThePathByItsFirstInterfaceKind) {
    EXPECT_EQ(LinkReader::typeOf({false, true, true}), LinkType::offline);
    EXPECT_EQ(LinkReader::typeOf({true, true, true}), LinkType::wifi);
    EXPECT_EQ(LinkReader::typeOf({true, false, true}), LinkType::ethernet);
    EXPECT_EQ(LinkReader::typeOf({true, false, false}), LinkType::other);
}

TEST(LinkReader, TakesOneReadingAndLetsGoOfTheMonitor) {
    // An update during the start, or later; a monitor that destroys its handler when it is
    // cancelled from within it, or keeps it.
    for (const bool immediate : {true, false}) {
        for (const bool dropsHandler : {true, false}) {
            FakeNetwork network;
            const std::weak_ptr<FakeMonitor> monitor = network.monitor;
            FakeMonitor& fake = *network.monitor;
            fake.dropsHandler = dropsHandler;
            if (immediate) {
                fake.immediate = NetworkPath{true, false, true};
            }
            std::vector<LinkType> results;
            LinkReader::currentType(network, [&](LinkType type) { results.push_back(type); });
            if (!immediate) {
                EXPECT_EQ(fake.label, "app.pacelet.path");
                const auto handler = fake.handler();
                handler({true, false, true});
                handler({true, true, false});
            }
            EXPECT_EQ(results, std::vector{LinkType::ethernet});
            EXPECT_TRUE(monitor.expired()) << "the handler and its monitor own each other";
        }
    }
}

TEST(LinkReader, TwoRacingUpdatesResumeOnce) {
    for (int round = 0; round < 200; ++round) {
        FakeNetwork network;
        const std::shared_ptr<FakeMonitor> monitor = network.monitor;
        std::atomic<int> resumed{0};
        LinkReader::currentType(network, [&](LinkType) { ++resumed; });
        std::barrier together{2};
        const auto update = [&, handler = monitor->handler()] {
            together.arrive_and_wait();
            handler({true, true, false});
        };
        std::thread first{update};
        std::thread second{update};
        first.join();
        second.join();
        EXPECT_EQ(resumed, 1);
        EXPECT_EQ(monitor->cancels, 1);
    }
}

} // namespace
} // namespace pacelet
