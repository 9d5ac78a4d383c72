#include "standards/standardfields.h"

#include "forms/formpage.h"
#include "model/itemroles.h"

#include <QFormLayout>

void StandardFields::addSerialLine(FieldGroup &fields, const char *baudRate, const char *parity)
{
    fields.add<ListField>(standardSerialPortRole, QT_TRANSLATE_NOOP("StandardFields", "Serial Port:"));
    fields.add<ListField>(standardBaudRateRole, QT_TRANSLATE_NOOP("StandardFields", "Baud Rate:"))
        ->fallback(baudRate);
    fields.add<ListField>(standardDataBitRole, QT_TRANSLATE_NOOP("StandardFields", "Data Bit:"));
    fields.add<ListField>(standardStopBitRole, QT_TRANSLATE_NOOP("StandardFields", "Stop Bit:"));
    fields.add<ListField>(standardParityBitRole, QT_TRANSLATE_NOOP("StandardFields", "Parity Bit:"))
        ->fallback(parity);
    fields.add<CheckField>(standardRtsEnableRole, QT_TRANSLATE_NOOP("StandardFields", "Rts Enable:"));
}

void StandardFields::addSerialTimes(FieldGroup &fields, int timeoutRole, const char *timeoutName)
{
    fields
        .add<TextField>(timeoutRole, timeoutName,
                        QT_TRANSLATE_NOOP("StandardFields", "Communication Timeout:"))
        ->milliseconds();
    fields
        .add<TextField>(standardCommunicationGapRole,
                        QT_TRANSLATE_NOOP("StandardFields", "Communication Gap:"))
        ->milliseconds();
}

QWidget *StandardFields::makeTriggerRow(FieldGroup &fields, QWidget *parent)
{
    auto *row = new QWidget(parent);
    auto *form = new QFormLayout(row);
    form->setContentsMargins(0, 0, 0, 0);
    fields.setLayout(form);
    fields
        .add<TextField>(standardCollectionIntervalRole,
                        QT_TRANSLATE_NOOP("StandardFields", "Trigger Conditions:"))
        ->milliseconds();
    FormPage::addTrigger(form, fields.translated(QT_TRANSLATE_NOOP("StandardFields", "Timed Loops")));
    return row;
}
