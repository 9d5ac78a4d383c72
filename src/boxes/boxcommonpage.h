#pragma once

class BoxEditDialog;
class PushOutcome;
class QLabel;
class QLineEdit;
class QProgressBar;
class QWidget;
class Workspace;

// The form's page "Commonly": session, transfers and reboot. All belongs to the page's widget.
struct BoxCommonPage {
    QWidget *widget;
    QLabel *status;
    QLabel *version;
    QProgressBar *progress; // of a transfer, 0 to 100
    PushOutcome *project;   // how the last push of a project ended
    PushOutcome *program;   // how that of a program ended

    // Builds the page as a child of the form and connects its buttons to the form's slots. The workspace may
    // be null; the field has the address of the Box.
    static BoxCommonPage build(BoxEditDialog *form, Workspace *workspace, const QLineEdit *address);
};
