#include "app/ConnectionOptions.h"

#include "app/HostAddresses.h"

ConnectionOptions ConnectionOptions::parse(const QString &connectionString)
{
    ConnectionOptions options;
    const auto pieces = connectionString.split(u';', Qt::SkipEmptyParts);
    for (const QString &piece : pieces) {
        const QString key = piece.section(u'=', 0, 0).trimmed().toUpper();
        const QString value = piece.section(u'=', 1);
        if (key == u"SERVER")
            options.server = value;
        else if (key == u"DATABASE")
            options.database = value;
        else if (key == u"UID")
            options.user = value;
        else if (key == u"PWD")
            options.password = value;
        else if (key == u"OPTION")
            options.option = value.toUInt();
    }
    return options;
}

bool ConnectionOptions::needsLookUp() const
{
    return !server.startsWith(u'/') && server != u"localhost" && !HostAddresses::isAddress(server);
}
