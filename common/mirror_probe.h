#pragma once

#include <optional>
#include <string_view>

namespace borvane {

/// What a program sends to find out whether a mirror listens at a port.
inline constexpr std::string_view mirror_probe = "GET / HTTP/1.0\r\nHost: localhost\r\n\r\n";

/// Whether more of an answer has to be read before MirrorVersion can judge it: its head has not ended yet, and is not
/// longer than any that a mirror sends.
bool IsUnfinishedHead(std::string_view answer);

/// The header field by which a mirror says which pages it speaks, and the number of those that this program's monitor
/// reads. It counts up when a monitor could no longer read the pages. A mirror that does not say it may speak any.
inline constexpr std::string_view pages_field = "Borvane-Pages";
inline constexpr std::string_view pages_number = "1";

/// The version of the mirror that sent the answer, "2.3.5", from the header Server of its head; nothing when another
/// program did, or the head is not whole.
std::optional<std::string_view> MirrorVersion(std::string_view answer);

/// Whether a mirror sent the answer that says that its pages are those which this program's monitor reads.
bool IsMirrorOfOurPages(std::string_view answer);

}  // namespace borvane
