#include "Core/Inspectors/PropertyListLimits.h"

#include "Core/Support/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace pacelet::PropertyListLimits {

namespace {

/// Entities times bytes: about half a second of moving text.
constexpr std::size_t mostMoves = std::size_t{1} << 31;

enum class Kind { plist, dictionary, array, key, value };

struct ElementRow {
    std::string_view name;
    Kind kind;
};
constexpr std::array<ElementRow, 11> elements{{
    {"plist", Kind::plist},
    {"dict", Kind::dictionary},
    {"array", Kind::array},
    {"key", Kind::key},
    {"string", Kind::value},
    {"integer", Kind::value},
    {"real", Kind::value},
    {"date", Kind::value},
    {"data", Kind::value},
    {"true", Kind::value},
    {"false", Kind::value},
}};

/// Walks over the tags of an XML list, for the decoder takes broken ones for whole. It counts how
/// deep containers nest, at least as deep as the decoder will see it: forms that would allow to
/// hide a container from this count are refused, if rare ones.
class TagWalk {
public:
    explicit TagWalk(std::string_view xml)
        : rest_{xml} {}

    bool isWholeAndShallow() {
        while (skipThrough("<")) {
            const bool fine = rest_.starts_with("!--")        ? skipThrough("-->", 3)
                              : rest_.starts_with("![CDATA[") ? skipThrough("]]>")
                                                              : takeTag();
            if (!fine) {
                return false;
            }
        }
        return isComplete_;
    }

private:
    struct Element {
        std::string_view name;
        Kind kind;
        bool lacksValue; ///< a dictionary behind a key, or a list without its one content
    };

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
            return open_.empty() && !isComplete_;
        }
        const std::size_t length = rest_.find('>');
        if (length == std::string_view::npos) {
            return false;
        }
        const std::string_view tag = rest_.substr(0, length);
        rest_.remove_prefix(length + 1);
        if (tag.starts_with('/')) {
            return close(trimmed(tag.substr(1)));
        }
        const auto isNamed = [&](const ElementRow& row) {
            return row.name == tag.substr(0, tag.find_first_of(" \t\r\n/"));
        };
        const auto row = std::ranges::find_if(elements, isNamed);
        // A quoted ">" would end a tag for one reader and not for the other.
        const bool isPlain = tag.find('"') == std::string_view::npos;
        return row != elements.end() && (isPlain || row->kind == Kind::plist) && open(*row) &&
               (!tag.ends_with('/') || close(row->name));
    }

    bool open(const ElementRow& row) {
        if (isComplete_ || (open_.empty() ? row.kind == Kind::key : !mayHold(open_.back(), row))) {
            return false;
        }
        open_.push_back({row.name, row.kind, row.kind == Kind::plist});
        depth_ += isContainer(row.kind) ? 1 : 0;
        return depth_ <= deepestNesting;
    }

    bool close(std::string_view name) {
        if (open_.empty() || open_.back().name != name || open_.back().lacksValue) {
            return false;
        }
        depth_ -= isContainer(open_.back().kind) ? 1 : 0;
        open_.pop_back();
        isComplete_ = open_.empty();
        return true;
    }

    static bool isContainer(Kind kind) { return kind == Kind::dictionary || kind == Kind::array; }

    /// Whether an element may stand next in `parent`, which takes note of it.
    static bool mayHold(Element& parent, const ElementRow& next) {
        const bool isKey = next.kind == Kind::key;
        if (next.kind == Kind::plist || parent.kind == Kind::key || parent.kind == Kind::value) {
            return false;
        }
        if (parent.kind == Kind::array) {
            return !isKey;
        }
        const bool fits =
            isKey ? parent.kind == Kind::dictionary && !parent.lacksValue : parent.lacksValue;
        parent.lacksValue = isKey;
        return fits;
    }

    std::string_view rest_;
    std::vector<Element> open_;
    std::size_t depth_ = 0;
    bool isComplete_ = false;
};

/// A walk through a binary list, each shared object visited as often as it is referred to, which
/// is how the decoder unfolds it. It gives up at the first limit or bound that is overstepped.
class BinaryWalk {
public:
    explicit BinaryWalk(std::string_view bytes)
        : bytes_{bytes} {}

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
    return entities * bytes.size() <= mostMoves && TagWalk{bytes}.isWholeAndShallow();
}

} // namespace pacelet::PropertyListLimits
