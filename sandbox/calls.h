// Which operation of the service a request asks for.
#pragma once
#include <QString>

#include "http_message.h"

namespace sandbox {

enum class CallKind {
  Submit,  // POST of a paid job
  Status,
  Result,
  Cancel,
  UploadStart,  // asks the storage host for an address to put a file
  Upload,       // the PUT of its bytes
  Download,     // a media file
  Models,       // the platform's list
  Pricing,
  Document,  // the published document of one model
  Purchase,         // POST of paid work at the gateway
  LookUp,           // of a purchase by the key it was sent under
  Operation,        // the state of a purchase
  CancelOperation,
  GatewayUpload,
  Prices,
  Interpret,
  Account,       // signing in, the account, devices, what is on sale, checkouts, the program's own news
  CheckoutPage,  // of the payment provider
  Other,
};

struct Call {
  CallKind kind = CallKind::Other;
  QString endpoint;   // of a submit in full, of the calls that follow as the address says it (owner/app)
  QString requestId;  // of status, result and cancel
};

Call identify(const HttpRequest& request);

// The names that scripts and counts use: "submit", "status", "result", "cancel", "upload-start", "upload", "download",
// "models", "pricing", "document", "purchase", "look-up", "operation", "cancel-operation", "gateway-upload", "prices",
// "interpret", "account", "checkout-page", "other".
QString nameOf(CallKind kind);
std::optional<CallKind> callNamed(const QString& name);
// The hosts that such a call goes to; empty for "other".
QStringList hostsOf(CallKind kind);

}  // namespace sandbox
