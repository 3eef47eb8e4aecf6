#pragma once

#include <QStringList>

/// A host's addresses, from the system itself: Qt's network library would bring nine others along at every start.
namespace HostAddresses {

/// Whether the text is an address already: "192.0.2.7", "2001:db8::7".
bool isAddress(const QString &text);
/// As texts, the preferred one first; none when the name is not known. May take long.
QStringList lookUp(const QString &name);

} // namespace HostAddresses
