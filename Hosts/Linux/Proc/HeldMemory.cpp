#include "Hosts/Linux/Proc/HeldMemory.h"

#include "Hosts/Linux/Proc/KeyedFigures.h"
#include "Hosts/Linux/Proc/ProcPath.h"
#include "Hosts/Linux/Proc/ProcessMemory.h"

#include <algorithm>
#include <charconv>
#include <fcntl.h>
#include <string>
#include <sys/sysmacros.h>
#include <vector>

namespace pacelet::Linux {

namespace {

/// Who has less in shared mappings than this has nothing noteworthy of a large file.
constexpr std::int64_t noteworthyShared = 1 << 20;

struct MemoryFile {
    std::int64_t bytes = 0;
    std::vector<std::int32_t> holders{};
};
using MemoryFiles = std::map<FileNumber, MemoryFile>;

bool isNameless(std::string_view target) {
    return target.starts_with("/memfd:") ||
           (target.starts_with("/dev/shm/") && target.ends_with(" (deleted)"));
}

template<typename Integer>
std::optional<Integer> hexNumber(std::string_view digits) {
    Integer number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, number, 16);
    return error == std::errc{} && rest == end ? std::optional{number} : std::nullopt;
}

/// The file behind a mapping whose line this is: "7f…-7f… rw-s 00000000 00:01 4711 /memfd:name".
std::optional<FileNumber> mappedFile(std::string_view line) {
    const auto words = splitDroppingEmpty(line, ' ');
    if (words.size() < 5 || words[0].find('-') == std::string_view::npos) {
        return std::nullopt;
    }
    const std::size_t colon = words[3].find(':');
    const auto major = hexNumber<unsigned>(words[3].substr(0, colon));
    const auto minor = colon == std::string_view::npos
                           ? std::nullopt
                           : hexNumber<unsigned>(words[3].substr(colon + 1));
    const auto inode = parseInteger<std::uint64_t>(words[4]);
    return major && minor && inode
               ? std::optional{FileNumber{gnu_dev_makedev(*major, *minor), *inode}}
               : std::nullopt;
}

void addHeldBy(const FolderReader& proc, std::int32_t pid, std::int64_t leastBytes,
               MemoryFiles& files) {
    constexpr std::int64_t bytesPerBlock = 512;
    FolderReader descriptors{proc.open(ProcPath{pid, "fd"}.text(), O_RDONLY | O_DIRECTORY)};
    if (!descriptors.isOpen()) {
        return;
    }
    ReadBuffer buffer;
    std::vector<std::int32_t> numbers;
    descriptors.listNumbers(numbers, buffer);
    for (const std::int32_t number : numbers) {
        const std::string name = std::to_string(number);
        const auto link = descriptors.readLink(name.c_str(), buffer);
        const auto facts =
            link && isNameless(*link) ? descriptors.target(name.c_str()) : std::nullopt;
        if (!facts || facts->st_blocks < leastBytes / bytesPerBlock) {
            continue;
        }
        MemoryFile& file = files[{facts->st_dev, facts->st_ino}];
        file.bytes = std::int64_t{facts->st_blocks} * bytesPerBlock;
        if (file.holders.empty() || file.holders.back() != pid) {
            file.holders.push_back(pid);
        }
    }
}

} // namespace

void addMapped(std::string_view smaps, std::map<FileNumber, std::int64_t>& mapped) {
    auto file = mapped.end();
    forEachLine(smaps, [&](std::string_view line) {
        // The names of figures begin with a capital letter, addresses with small ones and digits.
        const bool isFigure = !line.empty() && line.front() >= 'A' && line.front() <= 'Z';
        if (!isFigure) {
            const auto number = mappedFile(line);
            file = number ? mapped.find(*number) : mapped.end();
        } else if (file != mapped.end()) {
            const std::size_t colon = std::min(line.find(':'), line.size() - 1);
            const std::string_view key = line.substr(0, colon);
            if (key == "Pss" || key == "SwapPss") {
                file->second += parseKilobytes(line.substr(colon + 1)).value_or(0);
            }
        }
    });
}

std::unordered_map<std::int32_t, std::int64_t> readHeldMemory(const FolderReader& proc,
                                                              std::int64_t leastBytes) {
    ReadBuffer buffer;
    std::vector<std::int32_t> pids;
    FolderReader{proc.open(".", O_RDONLY | O_DIRECTORY)}.listNumbers(pids, buffer);
    MemoryFiles files;
    for (const std::int32_t pid : pids) {
        addHeldBy(proc, pid, leastBytes, files);
    }
    std::map<FileNumber, std::int64_t> mapped;
    for (const auto& [number, file] : files) {
        mapped.emplace(number, 0);
    }
    for (const std::int32_t pid : files.empty() ? std::vector<std::int32_t>{} : pids) {
        const auto status = proc.read(ProcPath{pid, "status"}.text(), buffer);
        const auto memory = status ? parseStatusMemory(*status) : std::nullopt;
        if (memory && memory->shared >= noteworthyShared) {
            addMapped(proc.readPieces(ProcPath{pid, "smaps"}.text(), buffer).value_or(""), mapped);
        }
    }
    std::unordered_map<std::int32_t, std::int64_t> held;
    for (const auto& [number, file] : files) {
        const std::int64_t rest = file.bytes - mapped.at(number);
        for (const std::int32_t pid : file.holders) {
            // A remainder is what the counters of a moment do not tell exactly.
            held[pid] +=
                rest >= leastBytes / 8 ? rest / static_cast<std::int64_t>(file.holders.size()) : 0;
        }
    }
    std::erase_if(held, [](const auto& entry) { return entry.second == 0; });
    return held;
}

} // namespace pacelet::Linux
