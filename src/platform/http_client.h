// The transport over the real network.
#pragma once

#include <memory>
#include <optional>

#include "platform/http.h"
#include "platform/service_configuration.h"

class QNetworkAccessManager;
class QNetworkRequest;
class QSslConfiguration;

namespace sorvan::platform {

struct SharedSession;

// Keeps no cookies, cache or credentials. With a configuration every connection goes through its proxy, and its
// authority is trusted beside the system's. Requests that still run when it is destroyed end with HttpError.
class HttpClient final : public HttpTransport {
 public:
  explicit HttpClient(std::optional<ServiceConfiguration> service = {});
  ~HttpClient() override;

  Task<HttpReply> send(HttpRequest request, std::stop_token stop) override;
  Task<PostOutcome> postOnce(HttpRequest request, std::stop_token stop) override;
  Task<HttpReply> download(HttpRequest request, QString toPath, std::stop_token stop) override;

  // For tests, which have no certificate for every server: plain http is accepted for downloads too.
  void allowPlainHttpForTests() { plainHttpAllowed = true; }

 private:
  std::shared_ptr<QNetworkAccessManager> liveSession();
  std::shared_ptr<QNetworkAccessManager> newSession() const;
  QNetworkRequest prepared(const HttpRequest& request) const;

  std::optional<ServiceConfiguration> service;
  // What is trusted, with a configuration.
  std::unique_ptr<QSslConfiguration> tls;
  std::shared_ptr<SharedSession> shared;
  bool plainHttpAllowed = false;
};

}  // namespace sorvan::platform
