#include "boxctl/boxlist.h"

#include "boxctl/projectdocument.h"
#include "definitions/documentkeys.h"

#include <QFileInfo>
#include <QHostAddress>
#include <QJsonArray>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace {

constexpr qint64 listLimit = qint64(1024) * 1024; // bytes

class Reader
{
public:
    BoxList list;

    void read(const QString &argument)
    {
        if (argument.startsWith(QLatin1Char('@'))) {
            readFile(argument.mid(1));
        } else if (!argument.contains(QLatin1Char(':')) || QHostAddress().setAddress(argument)
                   || BoxTarget::isAddress(argument.section(QLatin1Char(':'), 0, 0))) {
            add(argument, {}, {}); // with a port it is no address of a Box
        } else {
            readProject(argument);
        }
    }

private:
    // Where it stands goes before the complaint.
    void add(const QString &text, const QString &name, const QString &place)
    {
        const QString address = BoxTarget::addressOf(text);
        if (address.isEmpty()) {
            fail(QStringLiteral("%1'%2' is no IPv4 address").arg(place, text.left(60)));
        } else if (m_known.contains(address)) {
            list.notes.append(QStringLiteral("%1%2 is named twice and counts once").arg(place, address));
        } else {
            m_known.insert(address);
            list.boxes.append({address, name});
        }
    }

    void readFile(const QString &path)
    {
        QByteArray bytes;
        QString error;
        if (!readWhole(path, listLimit, &bytes, &error)) {
            fail(QStringLiteral("%1: %2").arg(path, error));
            return;
        }
        int number = 0;
        static const QRegularExpression end(QStringLiteral("\r\n?|\n"));
        const QStringList lines = QString::fromUtf8(bytes).split(end);
        for (const QString &whole : lines) {
            ++number;
            const QString line = whole.section(QLatin1Char('#'), 0, 0).simplified();
            if (!line.isEmpty() && list.ok()) {
                readLine(line, QStringLiteral("%1:%2: ").arg(path, QString::number(number)));
            }
        }
    }

    // An address and the words of a name.
    void readLine(const QString &line, const QString &place)
    {
        QStringList words = line.split(QLatin1Char(' '));
        const QString address = words.takeFirst();
        const auto second = std::find_if(words.cbegin(), words.cend(), BoxTarget::isAddress);
        if (BoxTarget::isAddress(address) && second != words.cend()) {
            fail(QStringLiteral("%1'%2' is a second address on one line").arg(place, *second));
        } else {
            add(address, words.join(QLatin1Char(' ')), place);
        }
    }

    void readProject(const QString &argument)
    {
        const int colon = endOfPath(argument);
        const QString path = argument.left(colon);
        const QString wanted = argument.mid(colon + 1);
        const ProjectDocument document = ProjectDocument::read(path);
        if (!document.ok()) {
            list.isBadDocument = true;
            fail(QStringLiteral("%1: %2").arg(path, document.error));
            return;
        }
        int found = 0;
        const QJsonArray boxes = document.object.value(DocumentKeys::boxsKey).toArray();
        for (const QJsonValue &value : boxes) {
            const QJsonObject box = value.toObject();
            const QString name = box.value(DocumentKeys::nameKey).toString();
            if (wanted.isEmpty() || name == wanted) {
                ++found;
                add(box.value(QStringLiteral("ip")).toString(), name,
                    QStringLiteral("%1:%2: ").arg(path, name));
            }
        }
        if (found == 0) {
            fail(wanted.isEmpty() ? QStringLiteral("%1: the project has no Box").arg(path)
                                  : QStringLiteral("%1: the project has no Box '%2'").arg(path, wanted));
        }
    }

    // The first colon behind the name of a file; the last of all if there is no such file.
    static int endOfPath(const QString &argument)
    {
        int colon = argument.indexOf(QLatin1Char(':'));
        while (colon >= 0 && !QFileInfo(argument.left(colon)).isFile()) {
            colon = argument.indexOf(QLatin1Char(':'), colon + 1);
        }
        return colon >= 0 ? colon : argument.lastIndexOf(QLatin1Char(':'));
    }

    void fail(const QString &error)
    {
        if (list.ok()) {
            list.error = error;
        }
    }

    QSet<QString> m_known;
};

} // namespace

QString BoxTarget::label() const
{
    return name.isEmpty() ? address : QStringLiteral("%1 (%2)").arg(address, name);
}

QString BoxTarget::addressOf(const QString &text)
{
    static const QRegularExpression dotted(
        QStringLiteral("\\A(?:(?:25[0-5]|2[0-4][0-9]|[01]?[0-9][0-9]?)(?:\\.(?!\\z)|\\z)){4}\\z"));
    if (!dotted.match(text).hasMatch()) {
        return {};
    }
    QStringList numbers;
    const QStringList parts = text.split(QLatin1Char('.'));
    for (const QString &part : parts) {
        numbers.append(QString::number(part.toInt()));
    }
    return numbers.join(QLatin1Char('.'));
}

bool BoxTarget::isAddress(const QString &text)
{
    return !addressOf(text).isEmpty();
}

BoxList BoxList::read(const QStringList &arguments)
{
    Reader reader;
    for (const QString &argument : arguments) {
        if (reader.list.ok()) {
            reader.read(argument);
        }
    }
    if (reader.list.ok() && reader.list.boxes.isEmpty()) {
        reader.list.error = arguments.isEmpty() ? QStringLiteral("a Box is missing")
                                                : QStringLiteral("the list names no Box");
    }
    return reader.list;
}
