#pragma once

#include <QImageReader>

/// Reads a picture file; its format is told by what it holds, not by its name. A PNG is read without the plug-ins of
/// the other formats, which would all be loaded to be asked.
class PictureReader : public QImageReader
{
public:
    explicit PictureReader(const QString &file);
};
