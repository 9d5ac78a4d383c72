#pragma once

#include <QPixmap>
#include <QString>
#include <QVector>

// Pictures side by side, each under its name.
class ContactSheet
{
public:
    void add(const QString &name, const QPixmap &picture) { m_pictures.append({name, picture}); }
    // In columns, each picture below the shortest one, at the scale of the pictures.
    QPixmap compose() const;

private:
    struct Picture {
        QString name;
        QPixmap pixmap;
    };
    QVector<Picture> m_pictures;
};
