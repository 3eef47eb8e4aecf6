#include "Program.h"
#include "app/Application.h"

int main(int argc, char **argv)
{
    Application application(argc, argv);
    Program program;
    return program.start() ? Application::exec() : 1;
}
