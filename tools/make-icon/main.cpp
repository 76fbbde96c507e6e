// Renders a drawing into a 24-bit bitmap: make-icon DRAWING SIZE COLOUR BITMAP

#include <QColor>
#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QStringList>
#include <QSvgRenderer>
#include <QTextStream>

int main(int argumentCount, char **arguments)
{
    QCoreApplication application(argumentCount, arguments);
    const QStringList given = QCoreApplication::arguments();
    QTextStream errors(stderr);
    if (given.size() != 5) {
        errors << "usage: make-icon DRAWING SIZE COLOUR BITMAP\n";
        return 2;
    }
    QSvgRenderer drawing(given[1]);
    const int size = given[2].toInt();
    const QColor background(given[3]);
    if (!drawing.isValid() || size <= 0 || !background.isValid()) {
        errors << "make-icon: cannot use " << given[1] << ", " << given[2] << ", " << given[3] << "\n";
        return 1;
    }
    QImage image(size, size, QImage::Format_RGB32);
    image.fill(background);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter);
    painter.end();
    if (!image.convertToFormat(QImage::Format_RGB888).save(given[4], "BMP")) {
        errors << "make-icon: cannot write " << given[4] << "\n";
        return 1;
    }
    return 0;
}
