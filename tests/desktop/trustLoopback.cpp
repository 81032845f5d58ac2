// Linked with the program's own main function: it trusts the certificate of the tests' server.

#include <QCoreApplication>
#include <QSslConfiguration>

namespace {

void trustLoopback()
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.addCaCertificates(QStringLiteral(KESTRELBAY_TEST_CERTIFICATE ".pem"));
    QSslConfiguration::setDefaultConfiguration(configuration);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(trustLoopback)
