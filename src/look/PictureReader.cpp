#include "look/PictureReader.h"

#include <QFile>

PictureReader::PictureReader(const QString &file) : QImageReader(file)
{
    const QByteArray signature("\x89PNG\r\n\x1a\n");
    QFile content(file);
    if (content.open(QIODevice::ReadOnly) && content.read(signature.size()) == signature) {
        setFormat("png");
        setAutoDetectImageFormat(false);
    } else {
        setDecideFormatFromContent(true);
    }
}
