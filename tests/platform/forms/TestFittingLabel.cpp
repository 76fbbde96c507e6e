#include "platform/forms/FittingLabel.h"

#include <QHelpEvent>
#include <QImage>
#include <QTest>
#include <QToolTip>

using platform::FittingLabel;

// Texts that a label has no room for.
class TestFittingLabel : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_label.resize(200, 5 * QFontMetrics(m_label.font()).lineSpacing());
        m_label.setAlignment(Qt::AlignLeft | Qt::AlignTop);
        m_label.show();
    }

    void aShortTextStandsAsItIs()
    {
        m_label.setText("You have selected <b>&Pets.");
        QCOMPARE(m_label.ShownLines().join(' '), "You have selected <b>&Pets.");
        QVERIFY(!TipOf());
        QCOMPARE(m_label.textFormat(), Qt::PlainText);
    }

    void noTextIsNothing()
    {
        m_label.setText(QString());
        QCOMPARE(m_label.ShownLines().join(""), QString());
        QVERIFY(!TipOf());
    }

    void aLongWordIsBroken()
    {
        const QString word(40, 'm');
        m_label.setText(word);
        QVERIFY(m_label.ShownLines().size() > 1);
        QCOMPARE(m_label.ShownLines().join(""), word);
        QVERIFY(!TipOf());
    }

    void aTextTooLongForAllLinesLosesItsMiddle_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("one word") << QString(255, 'W');
        QTest::newRow("words") << QString("Animals of the sea and ").repeated(11);
        QTest::newRow("letters of two units") << QString::fromUcs4(U"\U0001F40B").repeated(127);
        QTest::newRow("ten thousand") << QString(10000, 'i');
    }
    void aTextTooLongForAllLinesLosesItsMiddle()
    {
        QFETCH(QString, name);
        m_label.setText("You have selected " + name + ". Click OK to continue.");
        const QStringList lines = m_label.ShownLines();
        QVERIFY(lines.size() <= 5);
        QVERIFY(lines.size() >= 4); // the room is used
        for (const QString &line : lines)
            QVERIFY2(m_label.fontMetrics().horizontalAdvance(line) <= 200, qPrintable(line));
        const QString shown = lines.join(' ');
        QVERIFY2(shown.startsWith("You have selected "), qPrintable(shown));
        QVERIFY2(shown.endsWith("Click OK to continue."), qPrintable(shown));
        QCOMPARE(shown.count(QChar(0x2026)), 1);
        QVERIFY(shown.isValidUtf16());
        QVERIFY(TipOf());
    }

    void moreRoomShowsMore()
    {
        m_label.setText(QString(500, 'x'));
        const auto shown = m_label.ShownLines().join("").size();
        m_label.resize(400, m_label.height() * 2);
        QVERIFY(m_label.ShownLines().join("").size() > shown);
        m_label.resize(10, 3); // never nothing at all, and no end without it
        QCOMPARE(m_label.ShownLines().size(), 1);
    }

    // What is painted is what is told: it stays within the label and uses it.
    void theLinesArePainted()
    {
        m_label.setText(QString(2000, 'W'));
        const int inked = Inked();
        m_label.setText("W");
        QVERIFY(Inked() > 0);
        QVERIFY(inked > 50 * Inked());
        m_label.setText(QString());
        QCOMPARE(Inked(), 0);
    }

private:
    bool TipOf()
    {
        QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), m_label.mapToGlobal(QPoint(5, 5)));
        QToolTip::hideText();
        QCoreApplication::sendEvent(&m_label, &event);
        return QToolTip::isVisible();
    }
    int Inked()
    {
        QImage image(m_label.size(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPalette palette;
        palette.setColor(QPalette::Window, Qt::white);
        palette.setColor(QPalette::WindowText, Qt::black);
        m_label.setPalette(palette);
        m_label.render(&image);
        int dark = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                dark += qGray(image.pixel(x, y)) < 128;
        return dark;
    }

    FittingLabel m_label;
};

QTEST_MAIN(TestFittingLabel)
#include "TestFittingLabel.moc"
