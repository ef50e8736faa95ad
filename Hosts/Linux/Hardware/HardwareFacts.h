#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace pacelet::Linux {

struct HardwareFacts {
    std::string machineName;   ///< never empty
    std::string processorName; ///< empty when the kernel does not tell it
};

HardwareFacts readHardwareFacts(const std::string& procFolder, const std::string& sysFolder);

/// What the firmware calls the machine; a text that is missing is empty.
struct FirmwareNames {
    std::string product;         ///< DMI product name
    std::string family;          ///< DMI product family
    std::string deviceTreeModel; ///< of a board without DMI
    std::string chassisType;     ///< DMI chassis type, a number
};

/// The name under which a machine is sold. Some makers put it into the product's name, others into
/// the family and a bare order number into the name; many leave filling words. Without any, a word
/// for its form.
std::string machineName(const FirmwareNames& names);

/// The processor out of `/proc/cpuinfo`, without trade marks and clock rate; empty when the text
/// does not name it.
std::string processorName(std::string_view cpuinfo);

/// "16 GB"; what is no whole number of GB in MB, rounded up.
std::string memoryText(std::int64_t bytes);

} // namespace pacelet::Linux
