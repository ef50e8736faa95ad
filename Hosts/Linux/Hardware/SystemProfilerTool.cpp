#include "Hosts/Linux/Hardware/SystemProfilerTool.h"

#include "Core/Support/JsonWriter.h"
#include "Hosts/Linux/Hardware/HardwareFacts.h"

namespace pacelet::Linux::SystemProfilerTool {

namespace {

const std::vector<std::string> hardwareArguments{"SPHardwareDataType", "-json"};

/// The Mac's document. The processor stands under "cpu_type", as on every machine whose chip is not
/// of the Mac's own maker.
std::string document(const HardwareFacts& facts, std::int64_t memoryBytes) {
    JsonWriter json;
    json.beginObject().key("SPHardwareDataType").beginArray().beginObject();
    json.key("_name").value("hardware_overview");
    json.key("machine_name").value(facts.machineName);
    if (!facts.processorName.empty()) {
        json.key("cpu_type").value(facts.processorName);
    }
    if (memoryBytes > 0) {
        json.key("physical_memory").value(memoryText(memoryBytes));
    }
    json.endObject().endArray().endObject();
    return json.take() + '\n';
}

} // namespace

Shell::Output run(const std::vector<std::string>& arguments, const std::string& procFolder,
                  const std::string& sysFolder, std::int64_t memoryBytes) {
    if (arguments != hardwareArguments) {
        return {1, "",
                "system_profiler: unknown arguments\n"
                "usage: system_profiler SPHardwareDataType -json\n"};
    }
    return {0, document(readHardwareFacts(procFolder, sysFolder), memoryBytes), ""};
}

} // namespace pacelet::Linux::SystemProfilerTool
