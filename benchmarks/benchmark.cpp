// Measures the program against the least that could do the same work: the bare client library sending the same
// statements, an empty window. To be run by ./bench, at a sample centre that it may overwrite.

#include "Benchmark.h"
#include "StartedWindows.h"
#include "app/Application.h"

#include <QTextStream>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    Application application(argc, argv);
    if (Application::arguments().contains(u"--program"_s))
        return showProgram(benchStaff, benchPassword);
    try {
        Benchmark().run(Application::arguments().mid(1));
    } catch (const std::exception &error) {
        QTextStream(stderr) << error.what() << Qt::endl;
        return 1;
    }
}
