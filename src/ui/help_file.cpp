#include "ui/help_file.h"

#include <QDir>
#include <QFileInfo>

namespace ui {

QString FindHelpFile(const QString& programFolder)
{
    for (const char* place : {"TANDRI.HLP", "../share/choreographer/TANDRI.HLP"}) {
        const QFileInfo file(QDir(programFolder), QString::fromLatin1(place));
        if (file.isFile() && file.isReadable())
            return file.canonicalFilePath();
    }
    return {};
}

}  // namespace ui
