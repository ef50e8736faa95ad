#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <linux/netlink.h>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// Reading and writing the kernel's netlink messages as bytes. Every read is bounded: what is cut
/// short is left out, whatever the lengths inside it say.
namespace pacelet::Linux {

using Bytes = std::span<const std::byte>;
using ByteBuffer = std::vector<std::byte>;

/// A record of the kernel's at `offset` of `bytes`; nothing when it is not there in full.
template<typename Record>
std::optional<Record> readRecord(Bytes bytes, std::size_t offset = 0) {
    static_assert(std::is_trivially_copyable_v<Record>);
    if (offset > bytes.size() || bytes.size() - offset < sizeof(Record)) {
        return std::nullopt;
    }
    Record record;
    std::memcpy(&record, bytes.data() + offset, sizeof record);
    return record;
}

/// What stands behind a fixed head of `length` bytes and its padding.
Bytes behindHead(Bytes bytes, std::size_t length);

/// A text that ends at its first NUL, or at the end of the bytes.
std::string_view readText(Bytes bytes);

/// Calls `visit(const nlmsghdr&, Bytes payload)` for each whole message, in order.
template<typename Visitor>
void forEachMessage(Bytes bytes, Visitor&& visit) {
    while (const auto header = readRecord<nlmsghdr>(bytes)) {
        if (header->nlmsg_len < sizeof(nlmsghdr) || header->nlmsg_len > bytes.size()) {
            return;
        }
        visit(*header, bytes.subspan(sizeof(nlmsghdr), header->nlmsg_len - sizeof(nlmsghdr)));
        bytes = behindHead(bytes, header->nlmsg_len);
    }
}

/// Calls `visit(int type, Bytes payload)` for each whole attribute, in order.
template<typename Visitor>
void forEachAttribute(Bytes bytes, Visitor&& visit) {
    while (const auto header = readRecord<nlattr>(bytes)) {
        if (header->nla_len < sizeof(nlattr) || header->nla_len > bytes.size()) {
            return;
        }
        visit(header->nla_type & NLA_TYPE_MASK,
              bytes.subspan(sizeof(nlattr), header->nla_len - sizeof(nlattr)));
        bytes = behindHead(bytes, header->nla_len);
    }
}

/// Puts a message behind others, padded as they must be.
void appendMessage(ByteBuffer& messages, const nlmsghdr& header, Bytes payload);

/// Builds one message: the head, a fixed record, then attributes.
class NetlinkRequest {
public:
    NetlinkRequest(std::uint16_t type, std::uint16_t flags);

    /// The record that belongs to the type; called once, before any attribute.
    template<typename Record>
    NetlinkRequest& record(const Record& record) {
        static_assert(std::is_trivially_copyable_v<Record>);
        return append(std::as_bytes(std::span{&record, 1}));
    }

    template<typename Value>
    NetlinkRequest& attribute(std::uint16_t type, const Value& value) {
        static_assert(std::is_trivially_copyable_v<Value>);
        return attribute(type, std::as_bytes(std::span{&value, 1}));
    }
    NetlinkRequest& attribute(std::uint16_t type, Bytes value);
    NetlinkRequest& attribute(std::uint16_t type, const std::string& text);

    /// The whole message under this number.
    ByteBuffer bytes(std::uint32_t sequence) const;

private:
    NetlinkRequest& append(Bytes more);

    nlmsghdr header_{};
    ByteBuffer payload_;
};

} // namespace pacelet::Linux
