#include "standards/standardcustompolleditdialog.h"

#include "definitions/protocols.h"
#include "model/itemroles.h"
#include "parametertable/parametertable.h"
#include "standards/standardfields.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRegularExpressionValidator>

namespace {

constexpr int hexDigits = 0; // index in the list "HEX"
constexpr int noCrc = 1;     // index in the list "CRC"

int columnOf(ParameterCell cell)
{
    return ParameterVariant::customPoll().indexOf(cell);
}

} // namespace

standardCustomPollEditDialog::standardCustomPollEditDialog(QStandardItem *item, Workspace *workspace,
                                                           QWidget *parent)
    : StandardTableForm({staticMetaObject.className(),
                         QT_TRANSLATE_NOOP("standardCustomPollEditDialog",
                                           "The Standard CustomPoll '%1' is saved successfully.")},
                        Protocols::customPoll, ParameterVariant::customPoll(), item, workspace, parent)
    , m_hexDigits(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9a-fA-F ]*")), this))
    , m_printable(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[ -~]*")), this))
{
    StandardFields::addSerialLine(fields());
    StandardFields::addSerialTimes(fields(), standardCommunicationTimeoutRole);
    connect(addTable(), &ParameterTable::rowMade, this, &standardCustomPollEditDialog::connectRow);
    setParts();
}

void standardCustomPollEditDialog::connectRow(int row)
{
    const QComboBox *hex = currentTable()->list(row, columnOf(ParameterCell::Hex));
    QLineEdit *content = currentTable()->editor(row, columnOf(ParameterCell::DataContent));
    QComboBox *crc = currentTable()->list(row, columnOf(ParameterCell::Crc));
    if (!hex || !content || !crc) {
        return; // a stored row may be short
    }
    onCRCComboBoxChanged(hex->currentIndex(), crc);
    content->setValidator(validatorFor(hex->currentIndex()));
    // The row's widgets live and die together.
    connect(hex, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this, crc, content](int index) { onHexComboBoxChanged(index, crc, content); });
}

QRegularExpressionValidator *standardCustomPollEditDialog::validatorFor(int hexIndex) const
{
    return hexIndex == hexDigits ? m_hexDigits : m_printable;
}

void standardCustomPollEditDialog::onCRCComboBoxChanged(int index, QComboBox *crcComboBox)
{
    crcComboBox->setEnabled(index == hexDigits);
    if (index != hexDigits) {
        crcComboBox->setCurrentIndex(noCrc);
    }
}

void standardCustomPollEditDialog::onHexComboBoxChanged(int index, QComboBox *crcComboBox,
                                                        QLineEdit *dataContentLineEdit)
{
    onCRCComboBoxChanged(index, crcComboBox);
    dataContentLineEdit->setValidator(validatorFor(index));
    dataContentLineEdit->clear();
}
