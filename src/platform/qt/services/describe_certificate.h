#pragma once

#include <QList>

#include "platform/certificate.h"

class QSslCertificate;
class QSslError;

namespace velmora {

/// What a certificate says, and what is wrong with it.
ServerCertificate describe(const QSslCertificate& certificate, const QList<QSslError>& errors);

}  // namespace velmora
