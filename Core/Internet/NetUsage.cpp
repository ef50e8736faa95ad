#include "Core/Internet/NetUsage.h"

#include "Core/Sampling/Format.h"
#include "Core/Support/Checked.h"

namespace pacelet {

std::string byteRate(double bytesPerSecond) {
    return Format::bytes(checkedTruncate(bytesPerSecond, "a network rate is out of range")) + "/s";
}

} // namespace pacelet
