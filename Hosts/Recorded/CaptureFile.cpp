#include "Core/Support/Descriptor.h"
#include "Core/Support/Files.h"
#include "Hosts/Recorded/Capture.h"
#include "Hosts/Recorded/Wire.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <system_error>
#include <zstd.h>

namespace pacelet::Recorded::CaptureFile {

namespace {

constexpr std::string_view kind = "Pacelet capture ";
constexpr std::string_view version = "1\n";

[[noreturn]] void failAsDamaged() {
    throw CaptureError{"is damaged, or was cut off"};
}

[[noreturn]] void failWith(std::string_view what, int error) {
    throw CaptureError{std::string{what} + ": " + std::generic_category().message(error)};
}

bool isSound(const Capture& capture) {
    const auto looks = capture.looks.size();
    return looks > 0 && std::ranges::is_sorted(capture.looks, {}, &Moment::monotonic) &&
           std::ranges::all_of(capture.answers, [&](const auto& each) {
               const std::vector<Answer>& answers = each.second;
               return !answers.empty() && answers.back().look < looks &&
                      std::ranges::is_sorted(answers, {}, &Answer::look);
           });
}

} // namespace

std::string pack(Capture capture) {
    const std::string content = Wire::encode(std::move(capture));
    const std::unique_ptr<ZSTD_CCtx, decltype(&ZSTD_freeCCtx)> context{ZSTD_createCCtx(),
                                                                       ZSTD_freeCCtx};
    std::string frame(ZSTD_compressBound(content.size()), '\0');
    constexpr int thorough = 15;
    ZSTD_CCtx_setParameter(context.get(), ZSTD_c_compressionLevel, thorough);
    ZSTD_CCtx_setParameter(context.get(), ZSTD_c_checksumFlag, 1);
    const std::size_t size =
        ZSTD_compress2(context.get(), frame.data(), frame.size(), content.data(), content.size());
    if (ZSTD_isError(size) != 0) {
        throw CaptureError{std::string{"couldn't be compressed: "} + ZSTD_getErrorName(size)};
    }
    frame.resize(size);
    return std::string{kind}.append(version).append(frame);
}

Capture unpack(std::string_view file) {
    if (!file.starts_with(kind)) {
        throw CaptureError{"is no capture of a machine"};
    }
    file.remove_prefix(kind.size());
    if (!file.starts_with(version)) {
        throw CaptureError{"was captured by another version of Pacelet"};
    }
    file.remove_prefix(version.size());
    const auto size = ZSTD_getFrameContentSize(file.data(), file.size());
    if (size == ZSTD_CONTENTSIZE_ERROR || size == ZSTD_CONTENTSIZE_UNKNOWN ||
        size > largestCapture ||
        ZSTD_findFrameCompressedSize(file.data(), file.size()) != file.size()) {
        failAsDamaged();
    }
    std::string content(size, '\0');
    if (ZSTD_decompress(content.data(), content.size(), file.data(), file.size()) != size) {
        failAsDamaged();
    }
    return parse(content);
}

Capture parse(std::string_view content) {
    auto capture = Wire::decode<Capture>(content);
    if (!capture || !isSound(*capture)) {
        failAsDamaged();
    }
    return *std::move(capture);
}

void write(const std::string& path, Capture capture) {
    const std::string bytes = pack(std::move(capture));
    constexpr mode_t ownOnly = 0600;
    const Descriptor file{
        ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NONBLOCK, ownOnly)};
    if (!file) {
        failWith("couldn't be written", errno);
    }
    if (const std::error_code error = writeAll(file.get(), bytes)) {
        ::unlink(path.c_str());
        failWith("couldn't be written", error.value());
    }
}

Capture read(const std::string& path) {
    std::string bytes;
    if (const std::error_code error = readFile(path, largestFile, bytes)) {
        failWith("couldn't be read", error.value());
    }
    return unpack(bytes);
}

} // namespace pacelet::Recorded::CaptureFile
