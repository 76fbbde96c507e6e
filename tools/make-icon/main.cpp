// Renders a drawing into a picture: make-icon DRAWING SIZE COLOUR PICTURE. A bitmap has 24 bits and no
// transparency; any other format that the file's ending names keeps it where COLOUR is "transparent".

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
        errors << "usage: make-icon DRAWING SIZE COLOUR PICTURE\n";
        return 2;
    }
    QSvgRenderer drawing(given[1]);
    const int size = given[2].toInt();
    const QColor background(given[3]);
    if (!drawing.isValid() || size <= 0 || !background.isValid()) {
        errors << "make-icon: cannot use " << given[1] << ", " << given[2] << ", " << given[3] << "\n";
        return 1;
    }
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(background);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter);
    painter.end();
    if (given[4].endsWith(QStringLiteral(".bmp"), Qt::CaseInsensitive))
        image.convertTo(QImage::Format_RGB888);
    if (!image.save(given[4])) {
        errors << "make-icon: cannot write " << given[4] << "\n";
        return 1;
    }
    return 0;
}
