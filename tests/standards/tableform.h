#pragma once

#include "standards/standardcustompolleditdialog.h"
#include "standards/standarddioeditdialog.h"
#include "standards/standardopcuaeditdialog.h"

#include <memory>

using StandardTableFormPtr = std::unique_ptr<StandardTableForm>;

// The form of a Standard with a table of rows, by protocol.
inline StandardTableFormPtr makeTableForm(const QByteArray &protocol, QStandardItem *item,
                                          Workspace *workspace)
{
    if (protocol == "CustomPoll") {
        return std::make_unique<standardCustomPollEditDialog>(item, workspace);
    }
    if (protocol == "DIDO") {
        return std::make_unique<standardDIOEditDialog>(item, workspace);
    }
    return std::make_unique<standardOPCUAEditDialog>(item, workspace);
}
