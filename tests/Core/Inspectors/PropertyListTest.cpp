#include "Core/Inspectors/PropertyList.h"

#include "Core/Inspectors/PropertyListLimits.h"

#include <gtest/gtest.h>
#include <memory>
#include <plist/plist.h>
#include <string>
#include <vector>

namespace pacelet {
namespace {

std::string xml(const std::string& content) {
    return R"(<?xml version="1.0" encoding="UTF-8"?><!DOCTYPE plist PUBLIC "-//x" "y">)"
           "<plist version=\"1.0\">" +
           content + "</plist>\n";
}

std::string binaryOf(const std::string& text) {
    plist_t list = nullptr;
    plist_from_memory(text.data(), static_cast<std::uint32_t>(text.size()), &list);
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(list, &bytes, &length);
    plist_free(list);
    const std::unique_ptr<char, decltype(&std::free)> release{bytes, std::free};
    return {bytes, length};
}

/// ASCII as UTF-16, behind its mark.
std::string utf16(std::string_view text, bool bigEndian) {
    std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char character : text) {
        bytes += bigEndian ? std::string{'\0', character} : std::string{character, '\0'};
    }
    return bytes;
}

void appendNumber(std::string& bytes, std::size_t value, int width) {
    for (int shift = (width - 1) * 8; shift >= 0; shift -= 8) {
        bytes.push_back(shift < 64 ? static_cast<char>(value >> shift) : '\0');
    }
}

/// A binary list out of encoded objects, the first one at its top; references take two bytes.
std::string assemble(const std::vector<std::string>& objects, int offsetSize = 4) {
    std::string bytes = "bplist00";
    std::vector<std::size_t> offsets;
    for (const std::string& object : objects) {
        offsets.push_back(bytes.size());
        bytes += object;
    }
    const std::size_t table = bytes.size();
    for (const std::size_t offset : offsets) {
        appendNumber(bytes, offset, offsetSize);
    }
    bytes.append(6, '\0').append({static_cast<char>(offsetSize), 2});
    appendNumber(bytes, objects.size(), 8);
    appendNumber(bytes, 0, 8);
    appendNumber(bytes, table, 8);
    return bytes;
}

/// An encoded dictionary whose one key is the object `key`, or an array of twice the object `item`.
std::string dictionary(std::size_t key, std::size_t value) {
    std::string object = "\xD1";
    appendNumber(object, key, 2);
    appendNumber(object, value, 2);
    return object;
}
std::string arrayOfTwo(std::size_t item) {
    std::string object = "\xA2";
    appendNumber(object, item, 2);
    appendNumber(object, item, 2);
    return object;
}

TEST(PropertyList, ReadsTypesFromBothFormats) {
    const std::string text =
        xml("<dict><key>s</key><string>a &amp; <![CDATA[<dict>]]></string><key>t</key><true/>"
            "<key>f</key><false/><key>i</key><integer>1</integer><key>d</key><dict/>"
            "<key>a</key><array><string>one</string><string>two</string></array>"
            "<key>e</key><array/><key>m</key><array><string>x</string><true/></array></dict>");
    for (const std::string& bytes :
         {text, "\xEF\xBB\xBF" + text, utf16(text, true), utf16(text, false), binaryOf(text)}) {
        const auto list = PropertyList::parse(bytes);
        ASSERT_TRUE(list);
        EXPECT_EQ(list->string("s"), "a & <dict>");
        EXPECT_EQ(list->boolean("t"), true);
        EXPECT_EQ(list->boolean("f"), false);
        EXPECT_TRUE(list->isDictionary("d"));
        EXPECT_EQ(list->firstString("a"), "one");
        for (const char* key : {"t", "i", "d", "a", "none"}) {
            EXPECT_EQ(list->string(key), std::nullopt) << key;
        }
        for (const char* key : {"s", "i", "d", "none"}) {
            EXPECT_EQ(list->boolean(key), std::nullopt) << key;
        }
        for (const char* key : {"s", "e", "m", "d", "none"}) {
            EXPECT_EQ(list->firstString(key), std::nullopt) << key;
        }
    }
    EXPECT_EQ(
        PropertyList::parse(xml("<dict><key>s</key><string>\xFF</string></dict>"))->string("s"),
        "\xEF\xBF\xBD");
}

TEST(PropertyList, RefusesWhatIsNoDictionary) {
    for (const std::string& bytes :
         {std::string{}, std::string{"bplist00"}, std::string{"rubbish that is long enough"},
          xml(""), xml("<array/>"), xml("<string>x</string>"), xml("<dict><key>a</key>"),
          assemble({"\x55hello"}), binaryOf(xml("<dict/>")).substr(0, 30)}) {
        EXPECT_FALSE(PropertyList::parse(bytes)) << bytes;
    }
    EXPECT_EQ(PropertyList::parse(assemble({dictionary(1, 2), "\x51k", "\x51v"}))->string("k"),
              "v");
}

TEST(PropertyList, RefusesWhatWasCutOffOrIsNotWhole) {
    const std::string whole = xml("<dict><key>a</key><string>x</string><key>b</key><true/></dict>");
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        EXPECT_EQ(PropertyList::parse(whole.substr(0, length)).has_value(),
                  length >= whole.size() - 1)
            << length;
    }
    const std::string head = "<dict><key>a</key><true/>";
    for (const std::string rest :
         {"<key>b</key></dict>", "<key>b</key><key>c</key><true/></dict>", "<true/></dict>", "",
          "<key>b</key><array></dict>", "<key>b</key><what/></dict>", "</dict><dict></dict>",
          "<dict></dict>", "<?x ?></dict>", "</array>", "</array></dict>",
          "<key>b</key><array </array></dict>",
          "<key>b</key><array><plist><true/></plist></array></dict>"}) {
        EXPECT_FALSE(PropertyListLimits::allow(xml(head + rest))) << rest;
    }
    EXPECT_FALSE(PropertyListLimits::allow(whole + '<'));
    EXPECT_TRUE(PropertyList::parse(head + "</dict ><!-- <array> --><!---->\n"));
}

TEST(PropertyListLimits, KeepHostileFilesFromTheDecoder) {
    using PropertyListLimits::allow;
    using PropertyListLimits::deepestNesting;
    const auto repeated = [](std::string_view piece, std::size_t count) {
        std::string text;
        for (; count > 0; --count) {
            text += piece;
        }
        return text;
    };
    const auto nested = [&](const std::string& open, std::size_t depth) {
        return xml(repeated(open, depth) + repeated("</array>", depth));
    };
    EXPECT_TRUE(allow(nested("<array>", deepestNesting)));
    EXPECT_TRUE(allow(xml("<array>" + repeated("<dict></dict><array/>", 5000) + "</array>")));
    for (const char* open :
         {"<array>", "<array><!-- </array> -->", "<array><string><![CDATA[</array>]]></string>",
          "<array><?x </array> ?>", "<array><!DOCTYPE x [</array>]>", "<array a=\"></array>\">",
          "<array ><string a=\"</array>\"/>"}) {
        EXPECT_FALSE(allow(nested(open, 10'000))) << open;
    }
    std::string largest = xml("<dict/>");
    largest.resize(std::size_t{2} << 20, ' ');
    EXPECT_TRUE(allow(largest));
    EXPECT_FALSE(allow(largest + ' '));
    std::string entities = xml("<array/>" + std::string(1 << 15, '&'));
    entities.resize(1 << 16, ' ');
    EXPECT_TRUE(allow(entities));
    entities.back() = '&';
    EXPECT_FALSE(allow(entities)) << "one of them times 64 KB more";

    std::vector<std::string> chain{dictionary(1, 2), "\x51k"};
    std::vector<std::string> doubling = chain;
    for (std::size_t level = 2; level < 100; ++level) {
        chain.emplace_back(dictionary(1, level + 1));
        doubling.push_back(arrayOfTwo(level + 1));
    }
    chain.emplace_back("\x09");
    doubling.emplace_back("\x09");
    EXPECT_TRUE(allow(assemble(chain)));
    EXPECT_TRUE(PropertyList::parse(assemble(chain)));
    EXPECT_FALSE(allow(assemble(doubling))) << "two to the power of a hundred nodes";
    const std::vector<std::string> fine{dictionary(1, 2), "\x51k", "\x09"};
    for (const int width : {1, 8, 9}) {
        EXPECT_EQ(allow(assemble(fine, width)), width < 9);
        for (const std::size_t value : {0U, 2U, 3U}) {
            EXPECT_FALSE(allow(assemble({dictionary(1, value), "\x51k", ""}, width)))
                << "itself, what is in the table, or behind it";
        }
    }
    for (const auto& [fromEnd, number] :
         {std::pair{std::size_t{26}, '\0'}, {25, '\0'}, {25, '\t'}, {17, '\4'}, {33, '\x7F'}}) {
        std::string odd = assemble(fine);
        odd[odd.size() - fromEnd] = number;
        EXPECT_FALSE(allow(odd))
            << "numbers of 1 to 8 bytes, and all of the objects within the file";
    }

    const auto times = [](std::size_t count) {
        std::string array = "\xAF\x12";
        appendNumber(array, count, 4);
        for (std::size_t item = 0; item < count; ++item) {
            appendNumber(array, 1, 2);
        }
        return array;
    };
    for (const auto& [text, units] :
         {std::pair{"\x5F\x12", std::size_t{1} << 20}, {"\x6F\x12", 1 << 18}}) {
        std::string megabyte = text;
        appendNumber(megabyte, units, 4);
        megabyte.append(units, 'x');
        EXPECT_TRUE(allow(assemble({times(16), megabyte})));
        EXPECT_FALSE(allow(assemble({times(17), megabyte}))) << "17 megabytes out of one";
    }
    constexpr std::size_t nodes = PropertyListLimits::mostNodes;
    EXPECT_TRUE(allow(assemble({times(nodes - 1), "\x09"})));
    EXPECT_FALSE(allow(assemble({times(nodes), "\x09"})));

    // What is the list stands anywhere, and its containers may reach up to the table of offsets.
    std::string backwards = assemble({"\x09", arrayOfTwo(0)});
    backwards[backwards.size() - 9] = 1;
    EXPECT_TRUE(allow(backwards));
    std::string overlong = assemble({"\x09", arrayOfTwo(0).substr(0, 3)});
    overlong[overlong.size() - 9] = 1;
    EXPECT_FALSE(allow(overlong));
    using namespace std::string_literals;
    for (const std::string& empty : {"\x5F\x10\0"s, "\x5F\x13\0\0\0\0\0\0\0\0"s}) {
        EXPECT_TRUE(allow(assemble({empty})));
    }
    for (const std::string& odd : {"\x5F"s, "\x5F\x11\0"s, "\x5F\x14" + std::string(40, '\0')}) {
        EXPECT_FALSE(allow(assemble({odd}))) << "a length of 1 to 8 bytes, and all of them there";
    }
}

} // namespace
} // namespace pacelet
