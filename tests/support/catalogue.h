#pragma once

#include <QFile>
#include <QMap>
#include <QStringList>
#include <QXmlStreamReader>

// Context, source text and disambiguating comment: what Qt looks a translation up by.
using Key = QStringList;

struct Translation {
    QStringList texts; // one, or one for each plural form
    bool finished = true;
};

using Catalogue = QMap<Key, Translation>;

inline Translation readTranslation(QXmlStreamReader &xml)
{
    Translation translation;
    translation.finished = !xml.attributes().hasAttribute(QLatin1String("type"));
    QString text;
    while (!xml.atEnd() && !(xml.isEndElement() && xml.name() == QLatin1String("translation"))) {
        xml.readNext();
        if (xml.isCharacters()) {
            text += xml.text();
        } else if (xml.isStartElement()) {
            translation.texts.append(xml.readElementText());
        }
    }
    if (translation.texts.isEmpty()) {
        translation.texts.append(text);
    }
    return translation;
}

// Empty if the file is not a catalogue.
inline Catalogue readCatalogue(const QString &path)
{
    Catalogue catalogue;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return catalogue;
    }
    QXmlStreamReader xml(&file);
    QString context;
    Key key;
    while (xml.readNext() != QXmlStreamReader::Invalid && !xml.atEnd()) {
        if (!xml.isStartElement()) {
            continue;
        }
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("source")) {
            key = Key{context, xml.readElementText(), QString()};
        } else if (xml.name() == QLatin1String("comment")) {
            key[2] = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            catalogue.insert(key, readTranslation(xml));
        }
    }
    return xml.hasError() ? Catalogue() : catalogue;
}
