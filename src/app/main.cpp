// quillotune: the window program. It reads no command line.
#include <QApplication>
#include <QLabel>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QLabel l(QStringLiteral("Quillotune"));
    l.show();
    return app.exec();
}
