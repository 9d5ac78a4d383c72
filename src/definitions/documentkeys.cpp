#include "definitions/documentkeys.h"

#include "model/projecttree.h"

#include <QCoreApplication>

namespace DocumentKeys {

QString toDocument(const QVariant &value, Definitions::Coding coding)
{
    if (coding == Definitions::Coding::Text) {
        return value.toString();
    }
    return ProjectTree::isTrue(value) ? QStringLiteral("1") : QStringLiteral("0");
}

QString fromDocument(const QJsonValue &value, Definitions::Coding coding)
{
    const QString text = value.toString();
    if (coding == Definitions::Coding::Text) {
        return text;
    }
    return text == QLatin1String("1") ? QStringLiteral("true") : QStringLiteral("false");
}

Texts::Texts()
    : serviceAuthentication{QCoreApplication::translate("CMainWindow", "None"),
                            QCoreApplication::translate("CMainWindow", "Password")}
    , standardAuthentication{
          QCoreApplication::translate("CMainWindow",
                                      QT_TRANSLATE_NOOP("StandardAuthentication", "anonymous")),
          QCoreApplication::translate(
              "CMainWindow",
              QT_TRANSLATE_NOOP("StandardAuthentication", "Username and password verification"))}
{
}

} // namespace DocumentKeys
