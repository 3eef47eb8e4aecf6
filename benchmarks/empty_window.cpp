// Opens empty windows of the given sizes ("720x420"), each in place of the one before, and tells how they fared.

#include "Painted.h"

#include <QElapsedTimer>

#include <memory>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    std::unique_ptr<QWidget> window;
    const auto sizes = QApplication::arguments().mid(1);
    for (const QString &size : sizes) {
        QElapsedTimer timer;
        timer.start();
        auto next = std::make_unique<QWidget>();
        next->resize(size.section(u'x', 0, 0).toInt(), size.section(u'x', 1).toInt());
        next->show();
        awaitPainted([&] { return next.get(); });
        tellPainted(*next, double(timer.nsecsElapsed()) / 1e6);
        window = std::move(next);
    }
    tellPeakMemory();
}
