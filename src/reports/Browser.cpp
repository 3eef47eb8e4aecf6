#include "reports/Browser.h"

#include <QCoreApplication>
#include <QPluginLoader>

using namespace Qt::StringLiterals;

BrowserPlugin *BrowserPlugin::load()
{
    QPluginLoader loader(QCoreApplication::applicationDirPath() + u"/tamsora_browser"_s);
    return qobject_cast<BrowserPlugin *>(loader.instance());
}
