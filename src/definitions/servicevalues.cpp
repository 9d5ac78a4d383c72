#include "definitions/valuetables.h"

#include "model/itemroles.h"

namespace {

using namespace Definitions;

constexpr unsigned known = OpenService | PasswordService | SslService | VerifyingService;
constexpr unsigned withSsl = SslService | VerifyingService;

// All are read of every Service, so that a key that is missing empties its role.
Value plain(int role, const char *key, unsigned kinds = known, const char *defaultValue = nullptr)
{
    return {role, key, kinds, Place::Object, Coding::Text, defaultValue, nullptr, anySubKind};
}

Value flag(int role, const char *key)
{
    return ValueTables::choice(Choices::flags, plain(role, key));
}

Value extended(int role, const char *key, unsigned kinds, Coding coding = Coding::Text)
{
    return {role, key, kinds, Place::ExtendedParameters, coding, nullptr, nullptr, anySubKind};
}

Value client(int role, const char *key)
{
    return extended(role, key, VerifyingService);
}

} // namespace

const QVector<Value> &ValueTables::service()
{
    static const QVector<Value> table{
        plain(serviceProtocolRole, "protocol"),
        plain(servicePortRole, "port", known, "102"),
        flag(serviceEnableGoosePublishingRole, "enableGoosePublishing"),
        flag(serviceEnableSslRole, "enableSSL"),
        flag(serviceIsVerifyClientCertRole, "isVerifyClientCert"),
        // Compat: never "0"; without authentication the key is left out.
        extended(serviceAuthenticationRole, "authentication", PasswordService, Coding::ServiceLogin),
        extended(servicePasswordRole, "password", PasswordService),
        extended(serviceRootCertificateRole, "rootCertificate", withSsl),
        extended(serviceRootCertificatePathRole, "rootCertificatePath", withSsl),
        extended(serviceServerCertificateRole, "serverCertificate", withSsl),
        extended(serviceServerCertificatePathRole, "serverCertificatePath", withSsl),
        extended(serviceServerKeyRole, "serverKey", withSsl),
        extended(serviceServerKeyPathRole, "serverKeyPath", withSsl),
        extended(serviceServerKeyPasswordRole, "serverKeyPassword", withSsl),
        client(serviceClientCertificate1Role, "clientCertificate1"),
        client(serviceClientCertificatePath1Role, "clientCertificatePath1"),
        client(serviceClientCertificate2Role, "clientCertificate2"),
        client(serviceClientCertificatePath2Role, "clientCertificatePath2"),
        client(serviceClientCertificate3Role, "clientCertificate3"),
        client(serviceClientCertificatePath3Role, "clientCertificatePath3"),
        client(serviceClientCertificate4Role, "clientCertificate4"),
        client(serviceClientCertificatePath4Role, "clientCertificatePath4"),
        client(serviceClientCertificate5Role, "clientCertificate5"),
        client(serviceClientCertificatePath5Role, "clientCertificatePath5"),
        client(serviceClientCertificate6Role, "clientCertificate6"),
        client(serviceClientCertificatePath6Role, "clientCertificatePath6"),
        client(serviceClientCertificate7Role, "clientCertificate7"),
        client(serviceClientCertificatePath7Role, "clientCertificatePath7"),
        client(serviceClientCertificate8Role, "clientCertificate8"),
        client(serviceClientCertificatePath8Role, "clientCertificatePath8"),
        client(serviceClientCertificate9Role, "clientCertificate9"),
        client(serviceClientCertificatePath9Role, "clientCertificatePath9"),
        client(serviceClientCertificate10Role, "clientCertificate10"),
        client(serviceClientCertificatePath10Role, "clientCertificatePath10"),
    };
    return table;
}
