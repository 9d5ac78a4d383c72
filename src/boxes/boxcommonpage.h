#pragma once

class BoxEditDialog;
class LinkLine;
class PushOutcome;
class PushPreview;
class QLabel;
class QLineEdit;
class QProgressBar;
class QWidget;
class RequestLine;
class Workspace;

// The form's page "Commonly": session, transfers and reboot. All belongs to the page's widget.
struct BoxCommonPage {
    QWidget *widget;
    QLabel *status;
    QLabel *version;
    LinkLine *link;         // whom status and version come from, and when
    PushPreview *preview;   // what "Update project" would push
    QProgressBar *progress; // of a transfer, 0 to 100
    PushOutcome *project;   // how the last push of a project ended
    PushOutcome *program;   // how that of a program ended
    RequestLine *reboot;    // what became of the last "Reboot Device"; hidden before the first

    // Builds the page as a child of the form and connects its buttons to the form's slots. The workspace may
    // be null; the field has the address of the Box.
    static BoxCommonPage build(BoxEditDialog *form, Workspace *workspace, const QLineEdit *address);
};
