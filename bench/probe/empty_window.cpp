// The baseline of the start benchmark: an empty Qt main window.

#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QMainWindow window;
    window.showMaximized();
    return QApplication::exec();
}
