#include "platform/forms/SingleLine.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QTest>

// Boxes for one line of a text file.
class TestSingleLine : public QObject {
    Q_OBJECT

private slots:
    void whatIsPastedIsOneLine_data()
    {
        QTest::addColumn<QString>("pasted");
        QTest::addColumn<QString>("text");
        QTest::newRow("a word") << "cat"
                                << "cat";
        QTest::newRow("two lines") << "cat\ndog"
                                   << "cat dog";
        QTest::newRow("lines of another system") << "cat\r\ndog\rcow"
                                                 << "cat dog cow";
        QTest::newRow("nothing else is changed")
            << QString(" \t_\"<b>\u00e9\u0434\U0001F409 ") << QString(" \t_\"<b>\u00e9\u0434\U0001F409 ");
        QTest::newRow("the mark of a file") << QString("\ufeffcat") << "cat";
    }
    void whatIsPastedIsOneLine()
    {
        QFETCH(QString, pasted);
        QLineEdit box;
        platform::KeepSingleLine(box);
        QGuiApplication::clipboard()->setText(pasted);
        box.paste();
        QTEST(box.text(), "text");
        box.setText(pasted);
        QTEST(box.text(), "text");
    }

    void thereIsNoLimit()
    {
        QLineEdit box;
        platform::KeepSingleLine(box);
        box.setText(QString(100000, 'x'));
        QCOMPARE(box.text().size(), 100000);
    }
};

QTEST_MAIN(TestSingleLine)
#include "TestSingleLine.moc"
