#include "platform/qt/services/describe_certificate.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QLocale>
#include <QSslCertificate>
#include <QSslError>
#include <QStringList>

#include "platform/qt/strings.h"

namespace velmora {

namespace {

/// A text may come from a stranger who wants it to look like several lines of the box that shows it.
std::string oneLine(const QStringList& parts) {
  constexpr qsizetype longest = 120;
  QStringList named = parts;
  named.removeAll(QString());
  named.removeDuplicates();
  const QString line = named.join(", ").simplified();
  return utf8(line.size() > longest ? line.left(longest) + "..." : line);
}

QStringList issuerOf(const QSslCertificate& certificate) {
  return certificate.issuerInfo(QSslCertificate::CommonName) + certificate.issuerInfo(QSslCertificate::Organization);
}

/// The names of hosts that it holds for come first: the others are words.
QStringList subjectOf(const QSslCertificate& certificate) {
  constexpr qsizetype mostNames = 5;
  const QStringList hosts = certificate.subjectAlternativeNames().values(QSsl::DnsEntry);
  return hosts.mid(0, mostNames) + certificate.subjectInfo(QSslCertificate::CommonName) +
         certificate.subjectInfo(QSslCertificate::Organization);
}

QString fingerprintOf(const QSslCertificate& certificate) {
  return QString::fromLatin1(certificate.digest(QCryptographicHash::Sha256).toHex(':')).toUpper();
}

std::string allOf(const QList<QSslError>& errors) {
  QStringList words;
  for (const QSslError& error : errors) words.append(error.errorString());
  words.removeDuplicates();
  return utf8(words.join("; "));
}

}  // namespace

ServerCertificate describe(const QSslCertificate& certificate, const QList<QSslError>& errors) {
  if (certificate.isNull()) return {};
  return {.fingerprint = utf8(fingerprintOf(certificate)),
          .issuedFor = oneLine(subjectOf(certificate)),
          .issuedBy = oneLine(issuerOf(certificate)),
          .validUntil = utf8(QLocale::c().toString(certificate.expiryDate().toUTC(), "MMM d, yyyy hh:mm 'UTC'")),
          .text = utf8(certificate.toText()),
          .errorCode = errors.isEmpty() ? 0 : static_cast<std::int32_t>(errors.first().error()),
          .errorText = allOf(errors)};
}

}  // namespace velmora
