#pragma once

#include <curl/curl.h>

#include <string>

namespace quillon {

/// Why an exchange has failed, in plain words. `systemError` is the errno of the connection, 0 if
/// there is none.
[[nodiscard]] std::string failureReason(CURLcode code, long systemError);

inline constexpr const char* senselessAnswer = "the server's answer makes no sense";
inline constexpr const char* tooLargeAnswer = "the server's answer is too large";
inline constexpr const char* tooSlowAnswer = "the server takes too long to answer";

} // namespace quillon
