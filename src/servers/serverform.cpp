#include "servers/serverform.h"

#include "forms/formpage.h"
#include "log/activitylog.h"
#include "model/workspace.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStandardItem>

ServerForm::ServerForm(const Kind &kind, const QVector<Field> &fields, QStandardItem *item,
                       Workspace *workspace)
    : m_kind(kind)
    , m_item(item)
    , m_workspace(workspace)
    , m_fields(kind.className, fields)
{
    setWindowTitle(translated(kind.title));
    auto *content = new QWidget(this);
    m_page = new QVBoxLayout(content);
    auto *fieldPage = new QWidget(content);
    auto *form = new QFormLayout(fieldPage);
    form->setContentsMargins(0, 0, 0, 0);
    form->setRowWrapPolicy(QFormLayout::WrapLongRows); // in a narrow tab, rather than to scroll sideways
    m_fields.build(form);
    m_page->addWidget(fieldPage);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(FormPage::scrollArea(content, this));
    const FormPage::Buttons buttons =
        FormPage::appendButtons(layout, translated(QT_TRANSLATE_NOOP("ServerForm", "Save")),
                                translated(QT_TRANSLATE_NOOP("ServerForm", "Cancel")));
    connect(buttons.save, &QPushButton::clicked, this, &ServerForm::saveChanges);
    connect(buttons.cancel, &QPushButton::clicked, this, &ServerForm::rejected);
}

ServerForm::~ServerForm()
{
    log(QStringLiteral("destroyed"));
}

void ServerForm::begin()
{
    showItem(item());
    log(QStringLiteral("new-nuilt"));
}

void ServerForm::replaceItem(QStandardItem *item)
{
    m_item = ItemRef(item);
    m_unknown = m_kind.unknownOnReplace;
    showItem(item);
    log(QStringLiteral("replace"));
}

void ServerForm::saveChanges()
{
    if (!item()) {
        return; // its node has left the tree: there is nothing to write into
    }
    saveItem(item());
    if (m_workspace) {
        m_workspace->appendMessage(translated(m_kind.savedMessage).arg(item()->text()));
    }
    log(QStringLiteral("save"));
}

void ServerForm::clearData()
{
    for (const Field &field : m_fields.fields()) {
        QWidget *widget = m_fields.widget(QLatin1String(field.name));
        if (auto *edit = qobject_cast<QLineEdit *>(widget)) {
            edit->clear();
        } else if (auto *box = qobject_cast<QComboBox *>(widget)) {
            box->setCurrentIndex(0);
        }
    }
}

void ServerForm::showItem(QStandardItem *item)
{
    m_fields.fill(item, m_unknown);
}

void ServerForm::saveItem(QStandardItem *item)
{
    m_fields.save(item);
}

QString ServerForm::translated(const char *source) const
{
    return QCoreApplication::translate(m_kind.className, source);
}

void ServerForm::log(const QString &event) const
{
    logToFile(QLatin1String(m_kind.className) + QStringLiteral(": ") + event);
}
