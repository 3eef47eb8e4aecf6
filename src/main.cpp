#include "Program.h"

#include <QApplication>

int main(int argc, char **argv)
{
    Application application(argc, argv);
    Program program;
    return program.start() ? application.exec() : 1;
}
