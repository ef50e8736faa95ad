#include "Hosts/Linux/Browser/BridgeMessages.h"

#include "Core/Support/JsonWriter.h"

#include <algorithm>
#include <limits>
#include <simdjson.h>

namespace pacelet::Linux::BridgeMessages {

namespace {

using Object = simdjson::dom::object;

/// A browser counts its windows and tabs in 31 bits.
std::optional<std::int64_t> idIn(const Object& object, std::string_view key) {
    std::int64_t id = 0;
    if (object[key].get(id) != simdjson::SUCCESS || id <= 0 ||
        id > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    return id;
}

bool truthIn(const Object& object, std::string_view key) {
    bool truth = false;
    return object[key].get(truth) == simdjson::SUCCESS && truth;
}

std::string textIn(const Object& object, std::string_view key) {
    std::string_view text;
    if (object[key].get(text) != simdjson::SUCCESS) {
        return {};
    }
    std::string plain{text};
    std::replace_if(
        plain.begin(), plain.end(),
        [](char character) {
            const auto byte = static_cast<unsigned char>(character);
            return byte < 0x20 || byte == 0x7F;
        },
        ' ');
    return plain;
}

/// Calls `visit` with each object of the list under `key`.
template<typename Visitor>
void forEachObject(const Object& object, std::string_view key, Visitor&& visit) {
    simdjson::dom::array list;
    if (object[key].get(list) != simdjson::SUCCESS) {
        return;
    }
    for (const simdjson::dom::element element : list) {
        Object each;
        if (element.get(each) == simdjson::SUCCESS) {
            visit(each);
        }
    }
}

void addTab(const Object& object, Window& window) {
    if (const auto id = idIn(object, "id")) {
        window.tabs.push_back(
            {*id, truthIn(object, "active"), textIn(object, "title"), textIn(object, "url")});
    }
}

void addWindow(const Object& object, Reply& reply) {
    if (const auto id = idIn(object, "id")) {
        Window& window = reply.windows.emplace_back();
        window.id = *id;
        window.isFocused = truthIn(object, "focused");
        forEachObject(object, "tabs", [&](const Object& tab) { addTab(tab, window); });
    }
}

} // namespace

std::string write(std::int64_t id, const Request& request) {
    JsonWriter json;
    json.beginObject().key("id").value(id).key("ask").value(request.ask);
    if (request.window) {
        json.key("window").value(*request.window);
    }
    if (request.tab) {
        json.key("tab").value(*request.tab);
    }
    if (request.url) {
        json.key("url").value(*request.url);
    }
    if (request.token) {
        json.key("token").value(*request.token);
    }
    return json.endObject().take();
}

std::optional<Reply> parse(std::string_view json) {
    simdjson::dom::parser parser;
    Object object;
    Reply reply;
    if (parser.parse(simdjson::padded_string{json}).get(object) != simdjson::SUCCESS ||
        object["id"].get(reply.id) != simdjson::SUCCESS) {
        return std::nullopt;
    }
    if (object["error"].error() != simdjson::NO_SUCH_FIELD) {
        reply.error = textIn(object, "error");
        return reply;
    }
    forEachObject(object, "windows", [&](const Object& window) { addWindow(window, reply); });
    reply.made = idIn(object, "tab");
    if (!reply.made) {
        reply.made = idIn(object, "window");
    }
    return reply;
}

} // namespace pacelet::Linux::BridgeMessages
