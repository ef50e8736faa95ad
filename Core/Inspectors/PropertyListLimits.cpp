#include "Core/Inspectors/PropertyListLimits.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

namespace pacelet::PropertyListLimits {

namespace {

/// Entities times bytes: about half a second of moving text.
constexpr std::size_t mostMoves = std::size_t{1} << 31;

bool closesContainer(std::string_view tag) {
    return tag.starts_with("/dict") || tag.starts_with("/array");
}

bool opensContainer(std::string_view tag) {
    return (tag.starts_with("dict") || tag.starts_with("array")) && !tag.ends_with('/');
}

/// Counts how deep the containers of an XML list nest, at least as deep as the decoder will see
/// it: forms that would allow to hide a container from this count are refused, if rare ones.
class NestingScan {
public:
    explicit NestingScan(std::string_view xml) : rest_{xml} {}

    bool staysShallow() {
        while (skipThrough("<")) {
            const bool fine = rest_.starts_with("!--")        ? skipThrough("-->", 3)
                              : rest_.starts_with("![CDATA[") ? skipThrough("]]>")
                                                              : takeTag();
            if (!fine) {
                return false;
            }
        }
        return true;
    }

private:
    bool skipThrough(std::string_view mark, std::size_t from = 0) {
        const std::size_t at = rest_.find(mark, from);
        if (at == std::string_view::npos) {
            return false;
        }
        rest_.remove_prefix(at + mark.size());
        return true;
    }

    bool takeTag() {
        if (rest_.starts_with('!') || rest_.starts_with('?')) {
            // Document type and processing instruction: only ahead of all content.
            return depth_ == 0;
        }
        const std::string_view tag = rest_.substr(0, rest_.find('>'));
        const bool opens = opensContainer(tag);
        if (tag.find('"') != std::string_view::npos && (opens || depth_ > 0)) {
            return false;
        }
        rest_.remove_prefix(tag.size());
        if (closesContainer(tag) && depth_ > 0) {
            --depth_;
        }
        return !opens || ++depth_ <= deepestNesting;
    }

    std::string_view rest_;
    std::size_t depth_ = 0;
};

/// A walk through a binary list, each shared object visited as often as it is referred to, which
/// is how the decoder unfolds it. It gives up at the first limit or bound that is overstepped.
class BinaryWalk {
public:
    explicit BinaryWalk(std::string_view bytes) : bytes_{bytes} {}

    bool staysSmall() {
        const std::size_t trailer = bytes_.size() - trailerSize;
        offsetSize_ = byteAt(trailer + 6);
        referenceSize_ = byteAt(trailer + 7);
        objects_ = number(trailer + 8, 8);
        table_ = number(trailer + 24, 8);
        const std::uint64_t root = number(trailer + 16, 8);
        const auto isWidth = [](std::uint64_t size) { return size >= 1 && size <= 8; };
        if (!isWidth(offsetSize_) || !isWidth(referenceSize_) || table_ > trailer ||
            objects_ > (trailer - table_) / offsetSize_ || !visit(root)) {
            return false;
        }
        while (!open_.empty()) {
            Container& container = open_.back();
            if (container.remaining == 0) {
                open_.pop_back();
                continue;
            }
            const std::uint64_t reference = number(container.next, referenceSize_);
            container.next += referenceSize_;
            --container.remaining;
            if (!visit(reference)) {
                return false;
            }
        }
        return true;
    }

    static constexpr std::size_t trailerSize = 32;
    static constexpr std::string_view magic = "bplist00";

private:
    /// A container whose references are being followed.
    struct Container {
        std::uint64_t next;
        std::uint64_t remaining;
    };

    std::uint64_t byteAt(std::uint64_t at) const { return static_cast<unsigned char>(bytes_[at]); }

    std::uint64_t number(std::uint64_t at, std::uint64_t size) const {
        std::uint64_t value = 0;
        for (std::uint64_t byte = 0; byte < size; ++byte) {
            value = value << 8 | byteAt(at + byte);
        }
        return value;
    }

    bool visit(std::uint64_t object) {
        if (object >= objects_ || ++nodes_ > mostNodes) {
            return false;
        }
        std::uint64_t at = number(table_ + object * offsetSize_, offsetSize_);
        if (at >= table_) {
            return false;
        }
        const std::uint64_t kind = byteAt(at) >> 4;
        const auto size = sizeAt(at);
        switch (kind) {
        case 0x4: // data
        case 0x5: // ASCII
        case 0x6: // UTF-16
            // Each 16-bit unit may take four bytes on the way to UTF-8.
            return size && (text_ += kind == 0x6 ? *size * 4 : *size) <= mostText;
        case 0xA: // array
        case 0xC: // set
            return size && open(at, *size);
        case 0xD: // dictionary
            return size && open(at, *size * 2);
        default:
            return true;
        }
    }

    /// How many elements the object at `at` has; moves `at` behind that. Nothing when there are
    /// more than the file has bytes.
    std::optional<std::uint64_t> sizeAt(std::uint64_t& at) const {
        constexpr std::uint64_t sizeFollows = 0xF;
        std::uint64_t size = byteAt(at++) & 0xF;
        if (size == sizeFollows) {
            const std::uint64_t width = std::uint64_t{1} << (byteAt(at++) & 0xF);
            if (width > 8 || at > table_ || width > table_ - at) {
                return std::nullopt;
            }
            size = number(at, width);
            at += width;
        }
        return size <= bytes_.size() ? std::optional{size} : std::nullopt;
    }

    bool open(std::uint64_t at, std::uint64_t references) {
        if (references * referenceSize_ > table_ - at || open_.size() == deepestNesting) {
            return false;
        }
        open_.push_back({at, references});
        return true;
    }

    std::string_view bytes_;
    std::uint64_t offsetSize_ = 0;
    std::uint64_t referenceSize_ = 0;
    std::uint64_t objects_ = 0;
    std::uint64_t table_ = 0;
    std::uint64_t nodes_ = 0;
    std::uint64_t text_ = 0;
    std::vector<Container> open_;
};

} // namespace

bool allow(std::string_view bytes) {
    if (bytes.size() > largestFile) {
        return false;
    }
    if (bytes.starts_with(BinaryWalk::magic)) {
        return bytes.size() >= BinaryWalk::magic.size() + BinaryWalk::trailerSize &&
               BinaryWalk{bytes}.staysSmall();
    }
    const auto entities = static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '&'));
    return entities * bytes.size() <= mostMoves && NestingScan{bytes}.staysShallow();
}

} // namespace pacelet::PropertyListLimits
