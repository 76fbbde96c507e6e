#include "platform/forms/MultiLineBox.h"
#include "platform/forms/Resizer.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMimeData>
#include <QScrollBar>
#include <QTest>
#include <QTextCursor>

using platform::MultiLineBox;

// Boxes for text of several lines.
class TestMultiLineBox : public QObject {
    Q_OBJECT

private slots:
    void theScrollBarIsThereOnlyWhenItIsNeeded_data()
    {
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<bool>("needed");
        const QString line = "How many legs has a spider?";
        const QString lines = QString(line + ' ').repeated(12);
        QTest::newRow("nothing was ever in it") << QStringList{} << false;
        QTest::newRow("empty") << QStringList{ "" } << false;
        QTest::newRow("one line") << QStringList{ line } << false;
        QTest::newRow("emptied") << QStringList{ line, "" } << false;
        QTest::newRow("many lines") << QStringList{ lines } << true;
        QTest::newRow("one line after many") << QStringList{ lines, line } << false;
        QTest::newRow("emptied after many") << QStringList{ lines, "" } << false;
    }
    void theScrollBarIsThereOnlyWhenItIsNeeded()
    {
        QFETCH(QStringList, texts);
        QFETCH(bool, needed);
        QWidget window;
        window.resize(800, 600);
        MultiLineBox box(&window);
        QFont font = box.font();
        font.setPixelSize(20);
        box.setFont(font);
        for (const int height : { 50, 60, 70, 90 }) {
            box.setGeometry(10, 10, 320, height);
            window.show();
            for (const QString &text : texts) {
                box.SetText(text);
                QCoreApplication::processEvents();
            }
            QCOMPARE(box.verticalScrollBar()->isVisible(), needed);
            QCOMPARE(box.verticalScrollBar()->isEnabled(), needed);
        }
    }
    void theTextIsWhatWasPutIn_data()
    {
        QTest::addColumn<QString>("given");
        QTest::addColumn<QString>("text");
        QTest::newRow("nothing") << ""
                                 << "";
        QTest::newRow("one line") << "What is 2+2?"
                                  << "What is 2+2?";
        QTest::newRow("two lines") << "What\nis?"
                                   << "What\r\nis?";
        QTest::newRow("lines of other systems") << "a\r\nb\rc\n"
                                                << "a\r\nb\r\nc\r\n";
        QTest::newRow("a soft break") << QString("a\u2028b") << "a\r\nb";
        QTest::newRow("blanks of all kinds")
            << QString(" a\u00a0?\t\u2009 ") << QString(" a\u00a0?\t\u2009 ");
        QTest::newRow("signs and scripts")
            << QString("_\"<b>&\u00e9\u0434\U0001F409") << QString("_\"<b>&\u00e9\u0434\U0001F409");
        QTest::newRow("the mark of a file") << QString("\ufeffa\ufeff") << "a";
    }
    void theTextIsWhatWasPutIn()
    {
        QFETCH(QString, given);
        MultiLineBox box;
        box.SetText(given);
        QTEST(box.Text(), "text");
        box.clear();
        QGuiApplication::clipboard()->setText(given);
        box.paste();
        QTEST(box.Text(), "text");
    }

    void whatItGivesItTakesBack()
    {
        MultiLineBox box;
        box.SetText(QString("a\r\n\r\nb\u00a0c"));
        box.SetText(box.Text());
        QCOMPARE(box.Text(), QString("a\r\n\r\nb\u00a0c"));
    }

    void enterBeginsALine()
    {
        MultiLineBox box;
        QTest::keyClicks(&box, "ab");
        QTest::keyClick(&box, Qt::Key_Return);
        QTest::keyClicks(&box, "c");
        QTest::keyClick(&box, Qt::Key_Return, Qt::ShiftModifier);
        QTest::keyClicks(&box, "d");
        QCOMPARE(box.Text(), QString("ab\r\nc\r\nd"));
    }

    void tabGoesOn()
    {
        QWidget window;
        MultiLineBox box(&window);
        QLineEdit next(&window);
        window.show();
        box.setFocus();
        QTest::keyClick(&box, Qt::Key_Tab);
        QCOMPARE(box.Text(), QString());
        QCOMPARE(window.focusWidget(), &next);
    }

    void itIsATextBox() { QCOMPARE(platform::Resizer::TypeOf(MultiLineBox()), QString("TextBox")); }

    // As it is when nobody has copied anything since the desktop began.
    void anEmptyClipboardIsPastedAsNothing()
    {
        MultiLineBox box;
        box.SetText("Who?");
        QGuiApplication::clipboard()->setMimeData(new QMimeData);
        QVERIFY(QGuiApplication::clipboard()->mimeData()->formats().isEmpty());
        QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(box.Text(), QString("Who?"));
        QGuiApplication::clipboard()->setText(" Me");
        box.moveCursor(QTextCursor::End);
        QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(box.Text(), QString("Who? Me"));
    }
};

QTEST_MAIN(TestMultiLineBox)
#include "TestMultiLineBox.moc"
