#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace pacelet::Simulated {

inline constexpr std::int64_t mebibyte = std::int64_t{1} << 20;
inline constexpr std::int64_t gibibyte = std::int64_t{1} << 30;
inline constexpr std::int64_t gigabyte = 1'000'000'000; ///< as disks are counted

/// What the machine is made of.
struct Hardware {
    std::string_view machineName;
    std::string_view model;
    std::string_view chip;       ///< an Apple chip's name, or the processor's on an Intel Mac
    std::string_view processors; ///< as the profiler puts it: "proc 8:4:4", or a count on Intel
    bool appleSilicon = true;
    std::int64_t cores = 8;
    std::int64_t memoryBytes = 0;
    std::int64_t diskBytes = 0;
    std::int64_t pageSize = 16384;
};

inline constexpr Hardware macBookAirM2{"MacBook Air", "Mac14,2",      "Apple M2",
                                       "proc 8:4:4",  true,           8,
                                       16 * gibibyte, 500 * gigabyte, 16384};

inline constexpr Hardware macBookAir8GB{"MacBook Air", "Mac14,2",      "Apple M2",
                                        "proc 8:4:4",  true,           8,
                                        8 * gibibyte,  250 * gigabyte, 16384};

inline constexpr Hardware macBookProM3Max{"MacBook Pro", "Mac15,9", "Apple M3 Max", "proc 16:12:4",
                                          true,          16,        64 * gibibyte,  2000 * gigabyte,
                                          16384};

inline constexpr Hardware macMiniM4{"Mac mini", "Mac16,10",    "Apple M4",     "proc 10:4:6", true,
                                    10,         24 * gibibyte, 500 * gigabyte, 16384};

inline constexpr Hardware macBookProIntel{"MacBook Pro",
                                          "MacBookPro16,3",
                                          "Quad-Core Intel Core i5",
                                          "4",
                                          false,
                                          8,
                                          8 * gibibyte,
                                          250 * gigabyte,
                                          4096};

} // namespace pacelet::Simulated
