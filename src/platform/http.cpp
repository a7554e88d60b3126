#include "platform/http.h"

#include <algorithm>
#include <array>

namespace sorvan::platform {

QByteArray HttpReply::header(const QByteArray& name) const {
  for (const auto& [key, value] : headers) {
    if (key.compare(name, Qt::CaseInsensitive) == 0) return value;
  }
  return {};
}

PostFate fateOfStatus(int status) {
  // Refusals before any work began. 408, 409, 425 and 499 are not among them: the work may have begun.
  static constexpr std::array refusals{400, 401, 402, 403, 404, 405, 413, 415, 422, 429};
  if (status >= 200 && status < 300) return PostFate::Answered;
  const bool refused = std::find(refusals.begin(), refusals.end(), status) != refusals.end();
  return refused ? PostFate::NotSent : PostFate::Unknown;
}

QString statusPhrase(int status) {
  // The registry of HTTP status codes.
  static constexpr std::array<std::pair<int, const char*>, 61> phrases{{
      {100, "Continue"},
      {101, "Switching Protocols"},
      {102, "Processing"},
      {103, "Early Hints"},
      {200, "OK"},
      {201, "Created"},
      {202, "Accepted"},
      {203, "Non-Authoritative Information"},
      {204, "No Content"},
      {205, "Reset Content"},
      {206, "Partial Content"},
      {207, "Multi-Status"},
      {208, "Already Reported"},
      {226, "IM Used"},
      {300, "Multiple Choices"},
      {301, "Moved Permanently"},
      {302, "Found"},
      {303, "See Other"},
      {304, "Not Modified"},
      {305, "Use Proxy"},
      {307, "Temporary Redirect"},
      {308, "Permanent Redirect"},
      {400, "Bad Request"},
      {401, "Unauthorized"},
      {402, "Payment Required"},
      {403, "Forbidden"},
      {404, "Not Found"},
      {405, "Method Not Allowed"},
      {406, "Not Acceptable"},
      {407, "Proxy Authentication Required"},
      {408, "Request Timeout"},
      {409, "Conflict"},
      {410, "Gone"},
      {411, "Length Required"},
      {412, "Precondition Failed"},
      {413, "Payload Too Large"},
      {414, "URI Too Long"},
      {415, "Unsupported Media Type"},
      {416, "Range Not Satisfiable"},
      {417, "Expectation Failed"},
      {421, "Misdirected Request"},
      {422, "Unprocessable Content"},
      {423, "Locked"},
      {424, "Failed Dependency"},
      {425, "Too Early"},
      {426, "Upgrade Required"},
      {428, "Precondition Required"},
      {429, "Too Many Requests"},
      {431, "Request Header Fields Too Large"},
      {451, "Unavailable For Legal Reasons"},
      {499, "Client Closed Request"},
      {500, "Internal Server Error"},
      {501, "Not Implemented"},
      {502, "Bad Gateway"},
      {503, "Service Unavailable"},
      {504, "Gateway Timeout"},
      {505, "HTTP Version Not Supported"},
      {506, "Variant Also Negotiates"},
      {507, "Insufficient Storage"},
      {508, "Loop Detected"},
      {511, "Network Authentication Required"},
  }};
  const auto found = std::find_if(phrases.begin(), phrases.end(), [&](const auto& row) { return row.first == status; });
  return found == phrases.end() ? QStringLiteral("Unknown") : QString::fromLatin1(found->second);
}

}  // namespace sorvan::platform
