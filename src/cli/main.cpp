// quillotune-cli: the program's logic without windows.
#include <QCoreApplication>
#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    std::printf("usage: quillotune-cli COMMAND ...\n");
    return argc > 1 ? 2 : 0;
}
