#include "planetarium/EclipseData.h"

#include <QFile>

using namespace Qt::StringLiterals;

QString LoadEclipsePath(const QString& dataFolder)
{
    constexpr qint64 longestFile = 4 << 20;
    QFile file(dataFolder + u"eclipse/20350902.kep"_s);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.read(longestFile)).trimmed() : QString();
}
