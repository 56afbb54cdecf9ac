#pragma once

#include <optional>
#include <string_view>

namespace borvane {

/// What a program sends to find out whether a mirror listens at a port.
inline constexpr std::string_view mirror_probe = "GET / HTTP/1.0\r\nHost: localhost\r\n\r\n";

/// Whether more of an answer has to be read before MirrorVersion can judge it: its head has not ended yet, and is not
/// longer than any that a mirror sends.
bool IsUnfinishedHead(std::string_view answer);

/// The version of the mirror that sent the answer, "2.3.5", from the header Server of its head; nothing when another
/// program did, or the head is not whole.
std::optional<std::string_view> MirrorVersion(std::string_view answer);

}  // namespace borvane
