#include "widgets/unitmark.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

void UnitMark::show(QLineEdit *edit, const QString &unit)
{
    constexpr int gap = 4; // pixels
    auto *label = new QLabel(unit, edit);
    label->setObjectName(QStringLiteral("unit"));
    label->setTextFormat(Qt::PlainText);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto *row = new QHBoxLayout(edit);
    row->setContentsMargins(0, 0, gap, 0);
    row->addWidget(label, 0, Qt::AlignRight | Qt::AlignVCenter);
    edit->setTextMargins(0, 0, label->sizeHint().width() + gap, 0);
}
