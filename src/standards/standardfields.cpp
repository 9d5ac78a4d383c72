#include "standards/standardfields.h"

#include "forms/formpage.h"
#include "model/itemroles.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QFormLayout>

QVector<Field> StandardFields::serialLine(const char *baudRate, const char *parity)
{
    const auto list = [](const char *name, const char *label, int role, const QStringList &entries,
                         const char *fallback) {
        return Field{name, label, FieldKind::List, role, FieldCheck::None, entries, nullptr, fallback};
    };
    return {
        list("serialport", QT_TRANSLATE_NOOP("StandardFields", "Serial Port:"), standardSerialPortRole,
             {QStringLiteral("COM1"), QStringLiteral("COM2")}, nullptr),
        list("baudRate", QT_TRANSLATE_NOOP("StandardFields", "Baud Rate:"), standardBaudRateRole,
             {QStringLiteral("115200"), QStringLiteral("57600"), QStringLiteral("38400"),
              QStringLiteral("19200"), QStringLiteral("9600"), QStringLiteral("4800"), QStringLiteral("2400"),
              QStringLiteral("1200"), QStringLiteral("600")},
             baudRate),
        list("dataBit", QT_TRANSLATE_NOOP("StandardFields", "Data Bit:"), standardDataBitRole,
             {QStringLiteral("8"), QStringLiteral("7")}, nullptr),
        list("stopBit", QT_TRANSLATE_NOOP("StandardFields", "Stop Bit:"), standardStopBitRole,
             {QStringLiteral("1"), QStringLiteral("2")}, nullptr),
        list("parityBit", QT_TRANSLATE_NOOP("StandardFields", "Parity Bit:"), standardParityBitRole,
             {QStringLiteral("NONE"), QStringLiteral("ODD"), QStringLiteral("EVEN")}, parity),
        {"rtsEnable", QT_TRANSLATE_NOOP("StandardFields", "Rts Enable:"), FieldKind::Check,
         standardRtsEnableRole},
    };
}

QVector<Field> StandardFields::serialTimes(const char *timeoutName, int timeoutRole)
{
    return {
        {timeoutName,
         QT_TRANSLATE_NOOP("StandardFields", "Communication Timeout:"),
         FieldKind::Text,
         timeoutRole,
         FieldCheck::Integer,
         {},
         "2000"},
        {"communicationGap",
         QT_TRANSLATE_NOOP("StandardFields", "Communication Gap:"),
         FieldKind::Text,
         standardCommunicationGapRole,
         FieldCheck::Integer,
         {},
         "-1"},
    };
}

QVector<Field> StandardFields::trigger()
{
    return {{"collectionInterval",
             QT_TRANSLATE_NOOP("StandardFields", "Trigger Conditions:"),
             FieldKind::Text,
             standardCollectionIntervalRole,
             FieldCheck::Integer,
             {},
             "2000"}};
}

QWidget *StandardFields::triggerRow(FieldTable &table, QWidget *parent)
{
    auto *row = new QWidget(parent);
    auto *form = new QFormLayout(row);
    form->setContentsMargins(0, 0, 0, 0);
    table.build(form);
    // The list stands between the label and the period; its one entry is not stored.
    auto *trigger = new QComboBox(row);
    trigger->setObjectName(QStringLiteral("trigger"));
    trigger->addItem(
        QCoreApplication::translate(table.context(), QT_TRANSLATE_NOOP("StandardFields", "Timed Loops")));
    FormPage::putBeforeField(form, 0, trigger);
    return row;
}
