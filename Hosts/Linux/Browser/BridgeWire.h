#pragma once

#include "Core/Support/Descriptor.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// How the program and its bridges in the browsers talk: frames over a socket in the user's runtime
/// folder. A frame is four bytes of length in the machine's own order and as many of JSON, which is
/// what a browser speaks with its native messaging hosts, too.
namespace pacelet::Linux::BridgeWire {

/// The most that a browser takes in one frame.
inline constexpr std::size_t longestRequest = std::size_t{1} << 20;

/// The most that a browser hands out in one.
inline constexpr std::size_t longestReply = std::size_t{1} << 26;

using Header = std::array<char, 4>;

/// The length as it stands before a frame of so many bytes.
Header header(std::size_t length);

/// The length that a header tells.
std::size_t length(const Header& header);

/// The frame that holds `message`.
std::string frame(std::string_view message);

/// Puts frames together from bytes as they come.
class FrameReader {
public:
    explicit FrameReader(std::size_t longest)
        : longest_{longest} {}

    /// Takes the next bytes in; false, for good, when they begin a frame that is too long.
    bool feed(std::string_view bytes);

    /// The next whole message, or nothing until more has come.
    std::optional<std::string> next();

    /// Bytes that may be fed without running past the frame that has begun.
    std::size_t wanted() const;

private:
    std::optional<std::size_t> announced() const;

    std::size_t longest_;
    std::string bytes_;
};

/// The folder in which the user's programs meet: below the runtime folder, or below that of
/// temporary files where there is none.
std::string standardFolder();

/// The program puts its socket there under this name once it listens.
inline constexpr std::string_view socketName = "browsers.socket";
std::string socketPath(const std::string& folder);

/// Makes the folder where it is missing. False unless it is the user's own and closed to others.
bool secureFolder(const std::string& folder);

/// Connects to the program's socket; not open when nobody listens, or somebody else does.
Descriptor connectTo(const std::string& folder);

/// Who is at the other end of a connected socket.
struct Peer {
    std::int32_t pid = 0;
    std::uint32_t uid = 0;
};
std::optional<Peer> peerOf(const Descriptor& socket);

} // namespace pacelet::Linux::BridgeWire
