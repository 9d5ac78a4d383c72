#include "model/projecttree.h"

#include <QApplication>
#include <QFile>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    return QFile::exists(ProjectTree::boxIcon) ? 0 : 1;
}
