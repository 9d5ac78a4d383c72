#include "document/checkedobject.h"

#include "definitions/choices.h"
#include "definitions/documentkeys.h"
#include "document/checktext.h"

using namespace Definitions;

CheckedObject::CheckedObject(const QJsonObject &object, const QString &folder, int row,
                             QVector<ProjectCheck::Remark> *remarks)
    : m_object(object)
    , m_folder(folder)
    , m_row(row)
    , m_remarks(remarks)
{
}

QString CheckedObject::name() const
{
    return m_object.value(DocumentKeys::nameKey).toString();
}

QJsonValue CheckedObject::value(const char *key, Place place) const
{
    const QLatin1String member(key);
    switch (place) {
    case Place::Parameter:
        return m_object.value(DocumentKeys::parameterKey).toObject().value(member);
    case Place::ExtendedParameters:
        return m_object.value(DocumentKeys::extendedParametersKey).toObject().value(member);
    case Place::Object:
        break;
    }
    return m_object.value(member);
}

QString CheckedObject::text(const char *key, Place place) const
{
    return value(key, place).toString();
}

QJsonArray CheckedObject::array(const char *key)
{
    const QJsonValue found = value(key, Place::Object);
    if (!found.isArray() && !found.isUndefined()) {
        error(CheckText::noList(QLatin1String(key)));
    }
    return found.toArray();
}

void CheckedObject::add(Severity severity, const QString &text)
{
    m_remarks->append({severity, m_folder, m_row, name(), text});
}

void CheckedObject::needText(Severity severity, const char *key, Place place)
{
    const QJsonValue found = value(key, place);
    if (found.isUndefined() || (found.isString() && found.toString().trimmed().isEmpty())) {
        add(severity, CheckText::empty(CheckText::labelOf(QLatin1String(key))));
    }
}

void CheckedObject::checkValues(Severity severity, Kind kind, unsigned subKinds, bool listsAreSet)
{
    const QJsonValue itsName = m_object.value(DocumentKeys::nameKey);
    if (!itsName.isString() && !itsName.isUndefined()) {
        add(severity, CheckText::noText(CheckText::labelOf(DocumentKeys::nameKey)));
    }
    for (const Value &row : values(kind)) {
        const bool isText =
            row.coding == Coding::Text || row.coding == Coding::Flag || row.coding == Coding::ServiceLogin;
        if (!(row.subKinds & subKinds) || !isText) {
            continue;
        }
        const QString label = CheckText::labelOf(QLatin1String(row.key));
        const QJsonValue found = value(row.key, row.place);
        const QString chosen = found.toString();
        if (!found.isString() && !found.isUndefined()) {
            add(severity, CheckText::noText(label));
        } else if (row.choices && chosen.isEmpty() && listsAreSet) {
            add(severity, CheckText::empty(label));
        } else if (row.choices && !chosen.isEmpty() && !Choices::list(row.choices).contains(chosen)) {
            add(severity, CheckText::notInList(label, chosen));
        }
    }
}
