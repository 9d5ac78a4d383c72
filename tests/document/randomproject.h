#pragma once

// Projects such as the forms of Standards, the service and Boxes can make, with texts of every kind.

#include "definitions/dlt645items.h"
#include "definitions/documentkeys.h"
#include "definitions/protocols.h"
#include "model/itemroles.h"
#include "model/projecttree.h"

#include <QRandomGenerator>
#include <QStandardItemModel>
#include <QStringList>

class RandomProject
{
public:
    // At most so many slaves or meters a Standard.
    RandomProject(quint32 seed, int mostGroups)
        : m_random(seed)
        , m_mostGroups(mostGroups)
    {
    }

    // Appends the project to the model.
    QStandardItem *makeIn(QStandardItemModel *model)
    {
        QStandardItem *project = ProjectTree::makeProject(text(), "/tmp", text());
        model->appendRow(project);
        ProjectTree::appendMissingFolders(project);
        for (int left = below(4); left > 0; --left) {
            makeStandard(define(project->child(ProjectTree::StandardRow)));
        }
        makeService(define(project->child(ProjectTree::ServiceRow)));
        for (int left = below(4); left > 0; --left) {
            fill(define(project->child(ProjectTree::BoxRow)), Definitions::Kind::Box);
        }
        return project;
    }

private:
    int below(int bound) { return m_random.bounded(bound); }

    template <typename T> const T &oneOf(const QVector<T> &choice) { return choice.at(below(choice.size())); }

    QString text()
    {
        static const QVector<QString> pieces{
            QString(),
            "a",
            "192.168.1.70",
            "true",
            "1",
            "\"",
            "\\",
            "/",
            "\\u0041",
            "'<&>",
            "{[,:]}",
            "电能表",
            "\u00e9\u00df",
            "\U0001F600",
            "\n\r\t\b\f",
            "\u0001\u001f\u007f\u0085",
            "\u2028\uFEFF\uFFFD",
            QString(1, QChar(0)),
            QString(300, QLatin1Char('x')),
            "-----BEGIN CERTIFICATE-----\nMIIB\n",
        };
        QString joined;
        for (int left = below(4); left > 0; --left) {
            joined += oneOf(pieces);
        }
        return joined;
    }

    // A flag as one form or another stores it.
    QVariant flag()
    {
        const bool on = below(2) == 1;
        return below(2) == 1 ? QVariant(on) : QVariant(on ? QString("true") : "false");
    }

    // Of one name there is one definition in a folder: the reader joins them.
    QStandardItem *define(QStandardItem *folder)
    {
        QString name = text();
        while (ProjectTree::childNamed(folder, name)) {
            name += QString::number(folder->rowCount());
        }
        return ProjectTree::appendDefinition(folder, name, QString());
    }

    void fill(QStandardItem *item, Definitions::Kind kind)
    {
        for (const Definitions::Value &value : Definitions::values(kind)) {
            const bool isText =
                value.coding == Definitions::Coding::Text || value.coding == Definitions::Coding::Flag;
            if (isText && below(10) > 0) { // else unset, as on an item whose form was never opened
                item->setData(text(), value.role);
            }
        }
    }

    void makeService(QStandardItem *item)
    {
        fill(item, Definitions::Kind::Service);
        item->setData(Protocols::iec61850, serviceProtocolRole);
        item->setData(DocumentKeys::Texts().serviceAuthentication.at(std::size_t(below(2))),
                      serviceAuthenticationRole);
        for (const int role :
             {serviceEnableGoosePublishingRole, serviceEnableSslRole, serviceIsVerifyClientCertRole}) {
            item->setData(flag(), role);
        }
    }

    void makeStandard(QStandardItem *item)
    {
        const bool meter = below(2) == 1;
        fill(item, Definitions::Kind::Standard);
        item->setData(meter ? Protocols::dlt645 : Protocols::modbus, standardProtocolRole);
        item->setData(flag(), standardRtsEnableRole);
        if (!meter) {
            item->setData(oneOf(QVector<QString>{Protocols::modbusTcp, Protocols::modbusRtu}),
                          standardModbusModeRole);
        }
        GroupMap groups;
        for (int number = below(m_mostGroups + 1); number > 0; --number) {
            groups.insert((meter ? QString("DLT645-%1") : "Modbus-%1").arg(number),
                          meter ? meterGroup() : modbusGroup());
        }
        item->setData(QVariant::fromValue(groups), standardDatasRole);
    }

    RowList modbusGroup()
    {
        RowList rows{{text(), text(), text(), flag().toString(), flag().toString()}};
        for (int left = below(6); left > 0; --left) {
            rows.append(QVariantList{text(), text(), text(), text(), text()});
        }
        return rows;
    }

    // Items of the group's edition, each once, as its form lists them.
    RowList meterGroup()
    {
        const auto version = below(2) == 1 ? Dlt645::Version2007 : Dlt645::Version1997;
        RowList rows{{text(), Dlt645::versionText(version)}};
        const auto items = Dlt645::itemsOf(version);
        for (const Dlt645::Item *item : items) {
            if (below(3) > 0) {
                rows.append(QVariantList{flag().toString(), Dlt645::label(*item), text()});
            }
        }
        if (below(4) == 0) {
            rows.append(QVariantList{flag().toString(), QString(), text()});
        }
        return rows;
    }

    QRandomGenerator m_random;
    int m_mostGroups;
};
