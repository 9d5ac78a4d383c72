#pragma once

#include "servers/serverform.h"

// The form of a Server of plain MQTT. Its two scripts can be edited under the custom payload format only, and
// are kept under the other one.
class ServerEditDialog : public ServerForm
{
    Q_OBJECT
public:
    // The workspace is not owned and may be null.
    ServerEditDialog(QStandardItem *item, Workspace *workspace);

private:
    void addPayload();
    void addScript(int role, const QString &label, const NumberedField *format);
};
