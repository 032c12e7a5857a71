// The baseline of the start: a main window of the toolkit with nothing in it.

#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QMainWindow window;
    window.showMaximized();
    return QApplication::exec();
}
