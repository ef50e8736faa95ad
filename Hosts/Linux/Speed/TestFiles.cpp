#include "Hosts/Linux/Speed/TestFiles.h"

#include <algorithm>
#include <simdjson.h>

namespace pacelet::Linux {

namespace {

std::string textOf(const simdjson::dom::object& object, std::string_view key) {
    std::string_view text;
    return object[key].get(text) == simdjson::SUCCESS ? std::string{text} : std::string{};
}

std::string eitherText(const simdjson::dom::object& object, std::string_view key,
                       std::string_view olderKey) {
    std::string text = textOf(object, key);
    return text.empty() ? textOf(object, olderKey) : text;
}

/// A name that libcurl takes for nothing else.
bool isHostName(std::string_view text) {
    return std::ranges::all_of(text, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '.' || c == '-';
    });
}

} // namespace

std::optional<TestFiles> parseTestFiles(std::string_view json) {
    constexpr std::int64_t understood = 1;
    simdjson::dom::parser parser;
    simdjson::dom::object root;
    simdjson::dom::object urls;
    std::int64_t version = understood;
    if (parser.parse(json.data(), json.size()).get(root) != simdjson::SUCCESS ||
        root["urls"].get(urls) != simdjson::SUCCESS) {
        return std::nullopt;
    }
    if (root["version"].get(version) == simdjson::INCORRECT_TYPE || version != understood) {
        return std::nullopt;
    }
    TestFiles files{eitherText(urls, "small_download_url", "small_https_download_url"),
                    eitherText(urls, "large_download_url", "large_https_download_url"),
                    eitherText(urls, "upload_url", "https_upload_url"),
                    textOf(root, "test_endpoint")};
    if (files.small.empty() || files.large.empty() || files.upload.empty()) {
        return std::nullopt;
    }
    if (!isHostName(files.endpoint)) {
        files.endpoint.clear();
    }
    return files;
}

} // namespace pacelet::Linux
