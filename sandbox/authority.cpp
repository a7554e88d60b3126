#include "authority.h"

#include <openssl/bio.h>
#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>

#include <QSslCertificate>
#include <QSslKey>
#include <stdexcept>

namespace sandbox {

namespace {

template <auto Free>
struct Freeing {
  template <class T>
  void operator()(T* pointer) const {
    Free(pointer);
  }
};
using Key = std::unique_ptr<EVP_PKEY, Freeing<EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Freeing<X509_free>>;
using Memory = std::unique_ptr<BIO, Freeing<BIO_free>>;
using Extension = std::unique_ptr<X509_EXTENSION, Freeing<X509_EXTENSION_free>>;

void require(bool holds, const char* what) {
  if (!holds) throw std::runtime_error(std::string("The certificate authority could not be made: ") + what);
}

Key makeKey() {
  Key key(EVP_EC_gen("P-256"));
  require(key != nullptr, "no key");
  return key;
}

void setRandomSerial(X509* certificate) {
  std::uint64_t serial = 0;
  require(RAND_bytes(reinterpret_cast<unsigned char*>(&serial), sizeof serial) == 1, "no randomness");
  ASN1_INTEGER_set_uint64(X509_get_serialNumber(certificate), serial >> 1);
}

void addExtension(X509* certificate, X509* issuer, int kind, const QByteArray& value) {
  X509V3_CTX context;
  X509V3_set_ctx_nodb(&context);
  X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
  const Extension extension(X509V3_EXT_conf_nid(nullptr, &context, kind, value.constData()));
  require(extension && X509_add_ext(certificate, extension.get(), -1) == 1, value.constData());
}

Certificate beginCertificate(const Key& key, const char* name) {
  constexpr long dayInSeconds = 24L * 60 * 60;
  Certificate certificate(X509_new());
  require(certificate != nullptr, "no certificate");
  X509_set_version(certificate.get(), X509_VERSION_3);
  setRandomSerial(certificate.get());
  X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -dayInSeconds);
  X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 30 * dayInSeconds);
  X509_set_pubkey(certificate.get(), key.get());
  X509_NAME_add_entry_by_txt(X509_get_subject_name(certificate.get()), "CN", MBSTRING_UTF8,
                             reinterpret_cast<const unsigned char*>(name), -1, -1, 0);
  return certificate;
}

Certificate makeRoot(const Key& key) {
  Certificate root = beginCertificate(key, "Sandbox Authority");
  X509_set_issuer_name(root.get(), X509_get_subject_name(root.get()));
  addExtension(root.get(), root.get(), NID_basic_constraints, "critical,CA:TRUE");
  addExtension(root.get(), root.get(), NID_key_usage, "critical,keyCertSign,cRLSign");
  addExtension(root.get(), root.get(), NID_subject_key_identifier, "hash");
  require(X509_sign(root.get(), key.get(), EVP_sha256()) > 0, "the root was not signed");
  return root;
}

Certificate makeLeaf(const Key& key, const Certificate& root, const Key& rootKey, const QStringList& hosts) {
  Certificate leaf = beginCertificate(key, "Sandbox Service");
  X509_set_issuer_name(leaf.get(), X509_get_subject_name(root.get()));
  QByteArrayList names;
  for (const QString& host : hosts) names.append("DNS:" + host.toLatin1());
  addExtension(leaf.get(), root.get(), NID_subject_alt_name, names.join(','));
  addExtension(leaf.get(), root.get(), NID_basic_constraints, "critical,CA:FALSE");
  addExtension(leaf.get(), root.get(), NID_ext_key_usage, "serverAuth");
  require(X509_sign(leaf.get(), rootKey.get(), EVP_sha256()) > 0, "the leaf was not signed");
  return leaf;
}

QByteArray contentOf(const Memory& memory) {
  char* data = nullptr;
  const long size = BIO_get_mem_data(memory.get(), &data);
  return QByteArray(data, size);
}

QByteArray pemOf(const Certificate& certificate) {
  const Memory memory(BIO_new(BIO_s_mem()));
  require(PEM_write_bio_X509(memory.get(), certificate.get()) == 1, "a certificate was not written");
  return contentOf(memory);
}

QByteArray pemOf(const Key& key) {
  const Memory memory(BIO_new(BIO_s_mem()));
  require(PEM_write_bio_PKCS8PrivateKey(memory.get(), key.get(), nullptr, nullptr, 0, nullptr, nullptr) == 1,
          "a key was not written");
  return contentOf(memory);
}

}  // namespace

Authority makeAuthority(const QStringList& hosts) {
  const Key rootKey = makeKey();
  const Certificate root = makeRoot(rootKey);
  const Key leafKey = makeKey();
  const Certificate leaf = makeLeaf(leafKey, root, rootKey, hosts);

  QSslConfiguration serverSide = QSslConfiguration::defaultConfiguration();
  serverSide.setLocalCertificate(QSslCertificate(pemOf(leaf), QSsl::Pem));
  serverSide.setPrivateKey(QSslKey(pemOf(leafKey), QSsl::Ec, QSsl::Pem));
  serverSide.setPeerVerifyMode(QSslSocket::VerifyNone);
  serverSide.setAllowedNextProtocols({QByteArrayLiteral("http/1.1")});
  require(!serverSide.localCertificate().isNull() && !serverSide.privateKey().isNull(), "Qt refused it");
  return {pemOf(root), serverSide};
}

}  // namespace sandbox
