#pragma once

#include "Core/Platform/Kernel.h"
#include "Core/Platform/Log.h"
#include "Core/Platform/LoginItems.h"
#include "Core/Platform/NetworkLink.h"
#include "Core/Platform/WindowServer.h"
#include "Core/Platform/Workspace.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// What the Mac's own records and numbers mean, without the Mac: the calls beside it only fetch
/// them.
namespace pacelet::Mac {

/// Bytes, to tell them from a text.
struct DataBytes {
    std::string bytes;

    bool operator==(const DataBytes&) const = default;
};

/// One value of a dictionary or of the user defaults. Nothing for what is of another class.
using PropertyValue =
    std::variant<std::monostate, bool, std::int64_t, double, std::string, DataBytes>;

using PropertyDictionary = std::map<std::string, PropertyValue>;

/// One window; values that are neither numbers, truths nor texts are left out.
WindowDictionary windowDictionary(const PropertyDictionary& window);

/// A truth, also in the form of the numbers 0 and 1, as a property list in the old format has it.
std::optional<bool> truthOf(const PropertyValue& value);

std::optional<std::string> dataOf(const PropertyValue& value);

/// By the number of NSApplicationActivationPolicy; one that is not known keeps out of the user's
/// sight.
ActivationPolicy activationPolicyOf(std::int64_t policy);

/// By the number of SMAppServiceStatus.
LoginItemStatus loginItemStatusOf(std::int64_t status);

/// By the number of NSProcessInfoThermalState: 0 to 3.
int thermalStateOf(std::int64_t state);

/// By the number of nw_path_status_t: only a path that is ready counts, and not one that might
/// become so.
NetworkPath networkPathOf(int status, bool usesWiFi, bool usesWiredEthernet);

/// By the number of CWChannelBand.
std::optional<int> channelBandOf(std::optional<std::int64_t> band);

/// The number of os_log_type_t.
std::uint8_t logTypeOf(LogLevel level);

/// What a sysctl that took `size` bytes has left in a record of `room` bytes. A text's record holds
/// more than the text.
std::optional<std::size_t> filledBytes(int status, std::size_t size, std::size_t room);

/// Of a `vm_statistics64` record. Its counts are unsigned and of 32 bits.
template<typename Record>
VMStatistics64 vmStatisticsOf(const Record& record) {
    return {record.free_count,          record.wire_count,
            record.purgeable_count,     record.compressor_page_count,
            record.external_page_count, record.internal_page_count};
}

} // namespace pacelet::Mac
