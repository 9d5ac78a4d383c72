#pragma once

#include "boxformtest.h"
#include "model/projecttree.h"

#include <QDir>
#include <QLabel>
#include <QRegularExpression>
#include <QStandardItemModel>
#include <QTemporaryDir>

// A Box form in a window with a project that it may push.
class BoxPushTest : public BoxFormTest
{
protected:
    using BoxFormTest::BoxFormTest;

    void init() override
    {
        BoxFormTest::init();
        m_dir = std::make_unique<QTemporaryDir>();
        m_model = std::make_unique<QStandardItemModel>();
    }
    // The project "plant", whose Box is the current item.
    QStandardItem *addProject()
    {
        QStandardItem *project = ProjectTree::makeProject("plant", m_dir->path(), QString());
        ProjectTree::appendMissingFolders(project);
        QStandardItem *box = ProjectTree::appendDefinition(
            ProjectTree::childNamed(project, ProjectTree::boxFolder), "Gate 1", QString());
        m_model->appendRow(project);
        m_workspace->current = box;
        return project;
    }
    // The last connection that brings a digest is answered with the verdict; the form's session is the first.
    void answerTransferWith(const QByteArray &verdict)
    {
        m_box->heard = [this, verdict](int index) {
            const QByteArray stream = m_box->received(index);
            if (stream.size() >= 30 && stream.right(30).startsWith(QByteArray::fromHex("1234"))
                && stream.at(stream.size() - 24) == 2) {
                m_box->send(index, verdict);
            }
        };
    }
    QStringList filesInFolder() const { return QDir(m_dir->path()).entryList(QDir::Files); }
    // What the form keeps of the last push, without the time.
    QString outcome(const char *label = "projectOutcome") const
    {
        static const QRegularExpression time("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d: ");
        const auto *line = find<QLabel>(label);
        const QString text = line->text();
        return line->isHidden() || !time.match(text).hasMatch() ? "none: " + text : text.mid(21);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<QStandardItemModel> m_model;
};
