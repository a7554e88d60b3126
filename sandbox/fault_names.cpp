#include "fault_names.h"

namespace sandbox {

namespace {

constexpr const char* json = "application/json";
constexpr const char* policy =
    R"({"detail":[{"loc":["body","prompt"],"msg":"The content could not be processed because it contained material )"
    R"(flagged by a content checker.","type":"content_policy_violation",)"
    R"("url":"https://docs.fal.ai/errors#content_policy_violation"}]})";
constexpr const char* nginx =
    "<html>\r\n<head><title>502 Bad Gateway</title></head>\r\n<body>\r\n<center><h1>502 Bad Gateway</h1></center>\r\n"
    "<hr><center>nginx</center>\r\n</body>\r\n</html>\r\n";
constexpr const char* locked =
    R"({"detail":"User is locked. Reason: Exhausted balance. Top up your balance at fal.ai/dashboard/billing."})";

std::vector<NamedFault> connectionFaults() {
  return {
      {"refuse", FaultKind::Refuse, false, 0, "", "", "the proxy answers 502 to CONNECT: the connection was refused"},
      {"close", FaultKind::Close, false, 0, "", "", "the proxy closes the connection at CONNECT"},
      {"break-tls", FaultKind::BreakTls, false, 0, "", "", "the tunnel opens and closes in the handshake"},
      {"untrusted", FaultKind::Untrusted, false, 0, "", "", "the certificate is of an authority that nobody trusts"},
  };
}

std::vector<NamedFault> wireFaults() {
  return {
      {"close-before-reading", FaultKind::CloseBeforeReading, false, 0, "", "",
       "the connection closes after the head; the body is not read, nothing happens"},
      {"late", FaultKind::Late, true, 0, "", "",
       "the connection is gone, and the call is carried out only after the next look-up was answered"},
      {"drop", FaultKind::Drop, true, 0, "", "", "the call is carried out, then the connection is gone"},
      {"cut-status-line", FaultKind::CutStatusLine, true, 0, "", "", "carried out, then half a status line"},
      {"hold", FaultKind::Hold, true, 0, "", "",
       "waits for a release: \"at\" is \"head\" (body unread), \"before\" or \"after\" it is carried out (default)"},
      {"slow", FaultKind::Slow, true, 0, "", "", "the body goes out at \"bytesPerSecond\" (default 4096)"},
      {"stall", FaultKind::Stall, true, 0, "", "", "half of the body, the rest when released"},
      {"cut-with-length", FaultKind::CutWithLength, true, 0, "", "", "half of the body under the full Content-Length"},
      {"cut-without-length", FaultKind::CutWithoutLength, true, 0, "", "", "half of the body, no Content-Length"},
      {"twice", FaultKind::Twice, true, 0, "", "", "the answer stands two times on the wire"},
  };
}

std::vector<NamedFault> contentFaults() {
  return {
      {"no-handle", FaultKind::NoHandle, true, 0, "", "", "an answer without request id and addresses"},
      {"elsewhere", FaultKind::Elsewhere, true, 0, "", "", "addresses in the answer lead to elsewhere.example"},
      {"backwards", FaultKind::Backwards, true, 0, "", "", "a status falls back to IN_QUEUE"},
      {"unknown-state", FaultKind::UnknownState, true, 0, "", "", "a status that no document names"},
      {"job-error", FaultKind::JobError, true, 0, "", "", "a status COMPLETED with error and error_type"},
      {"wrong-media", FaultKind::WrongMedia, true, 0, "", "", "a download holds text under the type of the media"},
      {"half-page", FaultKind::HalfPage, true, 0, "", "", "half of the body as if it were all of it"},
      {"other-media", FaultKind::OtherMedia, true, 0, "", "",
       "a download is a clip instead of a picture, or a picture instead of anything else"},
      {"damaged-media", FaultKind::DamagedMedia, true, 0, "", "", "a download is spoilt from its middle on"},
      {"vector-media", FaultKind::VectorMedia, true, 0, "", "", "a download is an SVG drawing"},
  };
}

std::vector<NamedFault> answeredFaults() {
  constexpr auto kind = FaultKind::Answer;
  return {
      {"server-error", kind, true, 500, json, R"({"detail":"Internal Server Error","error_type":"internal_error"})",
       "carried out, then 500"},
      {"bad-gateway", kind, true, 502, "text/html", nginx, "carried out, then 502 with HTML"},
      {"unavailable", kind, false, 503, json,
       R"({"detail":"Service unavailable","error_type":"runner_scheduling_failure"})", "503"},
      {"garbage", kind, true, 200, json, "\x01\xff{]not json at all",
       "carried out, then 200 with bytes that are no JSON"},
      {"empty", kind, true, 200, json, "", "carried out, then 200 with an empty body"},
      {"redirect", kind, false, 307, "text/plain", "",
       "3xx to \"location\" (default elsewhere.example), \"status\" 307"},
      {"unauthorized", kind, false, 401, json, R"({"detail":"No user found for Key ID and Secret"})", "401"},
      {"locked", kind, false, 403, json, locked, "403: the account is locked"},
      {"not-found", kind, false, 404, json, R"({"detail":"Not Found"})", "404"},
      {"gone", kind, false, 404, json, R"({"detail":"Request not found"})", "404: the result is no longer kept"},
      {"conflict", kind, false, 409, json, R"({"detail":"Conflict"})", "409"},
      {"invalid", kind, false, 422, json, policy, "422 with a list of details"},
      {"rate-limited", kind, false, 429, json,
       R"({"detail":"Reached concurrent requests limit of 2","type":"concurrent_requests_limit","data":{"limit":2}})",
       "429"},
      {"partner-error", kind, true, 200, json, R"({"error":{"message":"The partner is busy.","code":429}})",
       "carried out, then 200 with an error object instead of a result"},
      {"answer", kind, false, 200, json, "{}", "any answer: \"status\", \"body\", \"contentType\", \"location\""},
  };
}

std::vector<NamedFault> gatherFaults() {
  std::vector<NamedFault> all;
  for (const auto& part : {connectionFaults(), wireFaults(), contentFaults(), answeredFaults()})
    all.insert(all.end(), part.begin(), part.end());
  return all;
}

}  // namespace

const std::vector<NamedFault>& namedFaults() {
  static const std::vector<NamedFault> all = gatherFaults();
  return all;
}

const NamedFault* faultNamed(const QString& name) {
  for (const NamedFault& fault : namedFaults())
    if (name == QLatin1StringView(fault.name)) return &fault;
  return nullptr;
}

QString faultNames() {
  QString text;
  for (const NamedFault& fault : namedFaults())
    text += QStringLiteral("  %1 %2\n").arg(QLatin1StringView(fault.name), -22).arg(QLatin1StringView(fault.about));
  return text;
}

}  // namespace sandbox
