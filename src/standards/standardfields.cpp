#include "standards/standardfields.h"

#include "forms/formpage.h"
#include "model/itemroles.h"

#include <QComboBox>
#include <QFormLayout>

void StandardFields::addSerialLine(FieldGroup &fields, const char *baudRate, const char *parity)
{
    fields
        .add<ListField>(standardSerialPortRole, "serialport",
                        QT_TRANSLATE_NOOP("StandardFields", "Serial Port:"))
        ->entries("COM1 COM2");
    fields
        .add<ListField>(standardBaudRateRole, "baudRate", QT_TRANSLATE_NOOP("StandardFields", "Baud Rate:"))
        ->entries("115200 57600 38400 19200 9600 4800 2400 1200 600")
        ->fallback(baudRate);
    fields.add<ListField>(standardDataBitRole, "dataBit", QT_TRANSLATE_NOOP("StandardFields", "Data Bit:"))
        ->entries("8 7");
    fields.add<ListField>(standardStopBitRole, "stopBit", QT_TRANSLATE_NOOP("StandardFields", "Stop Bit:"))
        ->entries("1 2");
    fields
        .add<ListField>(standardParityBitRole, "parityBit",
                        QT_TRANSLATE_NOOP("StandardFields", "Parity Bit:"))
        ->entries("NONE ODD EVEN")
        ->fallback(parity);
    fields.add<CheckField>(standardRtsEnableRole, "rtsEnable",
                           QT_TRANSLATE_NOOP("StandardFields", "Rts Enable:"));
}

void StandardFields::addSerialTimes(FieldGroup &fields, int timeoutRole, const char *timeoutName)
{
    fields
        .add<TextField>(timeoutRole, timeoutName,
                        QT_TRANSLATE_NOOP("StandardFields", "Communication Timeout:"))
        ->check(integerValidator)
        ->initially("2000");
    fields
        .add<TextField>(standardCommunicationGapRole, "communicationGap",
                        QT_TRANSLATE_NOOP("StandardFields", "Communication Gap:"))
        ->check(integerValidator)
        ->initially("-1");
}

QWidget *StandardFields::makeTriggerRow(FieldGroup &fields, QWidget *parent)
{
    auto *row = new QWidget(parent);
    auto *form = new QFormLayout(row);
    form->setContentsMargins(0, 0, 0, 0);
    fields.setLayout(form);
    fields
        .add<TextField>(standardCollectionIntervalRole, "collectionInterval",
                        QT_TRANSLATE_NOOP("StandardFields", "Trigger Conditions:"))
        ->check(integerValidator)
        ->initially("2000");
    // The list stands between the label and the period; its one entry is not stored.
    auto *trigger = new QComboBox(row);
    trigger->setObjectName(QStringLiteral("trigger"));
    trigger->addItem(fields.translated(QT_TRANSLATE_NOOP("StandardFields", "Timed Loops")));
    FormPage::putBeforeField(form, 0, trigger);
    return row;
}
