#include "app/PictureFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

QString pictureFile(const QString &name, qreal dotsOfPixel)
{
    const QFileInfo plain(QDir(QCoreApplication::applicationDirPath()), name);
    const QFileInfo fine(plain.dir(), plain.completeBaseName() + u"@2x."_s + plain.suffix());
    return (dotsOfPixel > 1 && fine.exists() ? fine : plain).filePath();
}
