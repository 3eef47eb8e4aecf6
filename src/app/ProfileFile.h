#pragma once

#include <QByteArray>
#include <QString>

// A profile file: sections in square brackets and key=value lines, read and changed by the rules of the desktop's
// profile functions. Every call reads the file anew, because other tools may edit it while the program runs.
// Nothing here throws: a file that cannot be read is empty, a write that fails returns false.
class ProfileFile
{
public:
    explicit ProfileFile(QString path);

    // The value as it stands in the file, without outer blanks and one outer pair of quotes, at most size - 1 bytes
    // (never half a UTF-8 character); empty when there is none. The value of a UTF-16LE file comes as UTF-8.
    QByteArray value(const QString &section, const QString &key, int size) const;

    // Changes the one line, or adds it, and keeps every other byte. The text goes in as UTF-8, as Windows-1252 where
    // the file holds bytes that are no UTF-8, as UTF-16 where the file is UTF-16LE. False: nothing was changed. A file
    // that this creates can be read by its owner only.
    bool write(const QString &section, const QString &key, const QString &value) const;

private:
    QString m_path;
};

// UTF-8 where the bytes are valid UTF-8, otherwise Windows-1252.
QString profileText(const QByteArray &bytes);

// One byte per character (code unit); '?' for what Windows-1252 does not have.
QByteArray toWindows1252(const QString &text);
