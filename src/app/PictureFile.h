#pragma once

#include <QString>

/// The file to read for a picture of the program's folder: on a screen with several dots a pixel its twin name@2x when
/// there is one. The picture's own coordinates are always those of the plain file.
QString pictureFile(const QString &name, qreal dotsOfPixel);
