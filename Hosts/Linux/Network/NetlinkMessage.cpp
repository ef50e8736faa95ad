#include "Hosts/Linux/Network/NetlinkMessage.h"

#include <algorithm>

namespace pacelet::Linux {

namespace {

/// Messages, records and attributes all begin at multiples of four bytes.
constexpr std::size_t aligned(std::size_t length) {
    static_assert(NLMSG_ALIGNTO == NLA_ALIGNTO);
    return (length + NLMSG_ALIGNTO - 1) & ~std::size_t{NLMSG_ALIGNTO - 1};
}

void appendAligned(ByteBuffer& bytes, Bytes more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
    bytes.resize(aligned(bytes.size()));
}

} // namespace

Bytes behindHead(Bytes bytes, std::size_t length) {
    return bytes.subspan(std::min(aligned(length), bytes.size()));
}

std::string_view readText(Bytes bytes) {
    const std::string_view text{reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    return text.substr(0, text.find('\0'));
}

void appendMessage(ByteBuffer& messages, const nlmsghdr& header, Bytes payload) {
    appendAligned(messages, std::as_bytes(std::span{&header, 1}));
    appendAligned(messages, payload);
}

NetlinkRequest::NetlinkRequest(std::uint16_t type, std::uint16_t flags) {
    header_.nlmsg_type = type;
    header_.nlmsg_flags = static_cast<std::uint16_t>(NLM_F_REQUEST | flags);
}

NetlinkRequest& NetlinkRequest::attribute(std::uint16_t type, Bytes value) {
    nlattr header{};
    header.nla_len = static_cast<std::uint16_t>(sizeof header + value.size());
    header.nla_type = type;
    record(header);
    return append(value);
}

NetlinkRequest& NetlinkRequest::attribute(std::uint16_t type, const std::string& text) {
    return attribute(type, std::as_bytes(std::span{text.c_str(), text.size() + 1}));
}

ByteBuffer NetlinkRequest::bytes(std::uint32_t sequence) const {
    nlmsghdr header = header_;
    header.nlmsg_len = static_cast<std::uint32_t>(sizeof header + payload_.size());
    header.nlmsg_seq = sequence;
    ByteBuffer message;
    appendMessage(message, header, payload_);
    return message;
}

NetlinkRequest& NetlinkRequest::append(Bytes more) {
    appendAligned(payload_, more);
    return *this;
}

} // namespace pacelet::Linux
