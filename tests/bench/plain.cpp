#include <QApplication>
#include <QWidget>

// A window of the splash's size with nothing in it, for ./bench: what a start costs on this machine at least.
int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QWidget window(nullptr, Qt::Window | Qt::FramelessWindowHint);
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::white);
    window.setPalette(palette);
    window.setGeometry(188, 176, 648, 416);
    window.show();
    return QApplication::exec();
}
