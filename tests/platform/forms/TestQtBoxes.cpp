#include "TestScreens.h"
#include "platform/Error.h"
#include "platform/forms/OnTop.h"
#include "platform/forms/QtBoxes.h"
#include "support/ControlWalk.h"
#include "support/PlainDesk.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSemaphore>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <optional>
#include <thread>

using platform::BoxAnswer;
using platform::BoxButtons;
using support::PlainDesk;

// Boxes on the display.
class TestQtBoxes : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        m_desk.emplace();
        g_log.clear();
        One::Shared().Show();
        Two::Shared().Show();
        m_desk->Settle();
    }
    void cleanup() { m_desk.reset(); }

    void boxHasItsButtonsAndAnswers_data();
    void boxHasItsButtonsAndAnswers();
    void closingFromTheFrameGivesTheMildestAnswer_data();
    void closingFromTheFrameGivesTheMildestAnswer();
    void keysAnswer_data();
    void keysAnswer();
    void boxesAreWorkedByKeysAndToldOf();
    void theWayOutLooksLikeOne();
    void titleIsTheApplicationsUnlessGiven();
    void textIsNeverMarkup();
    void hugeTextScrollsOnTheDisplay_data();
    void hugeTextScrollsOnTheDisplay();
    void shortTextFits();
    void charactersHideNothingOfABox();
    void boxGoesAsideForWhoComesToRestOnIt();
    void boxCannotBeMadeSmallOrLarge();
    void typedTextComesBack_data();
    void typedTextComesBack();
    void screensAreOffWhileABoxIsOpen();
    void clickOnAScreenDoesNotTakeTheKeysFromABox();
    void timersTickWhileABoxIsOpen();
    void boxOverABoxHoldsOffTheFirstOne();
    void boxOutlivesTheScreenItCameFrom();
    void boxNeedsNoScreen();
    void quickWorkShowsNothing();
    void slowWorkShowsABoxThatCannotBeClosed();
    void workThatFailsPassesItsErrorOn();

private:
    // Shows a box and calls `whileOpen` with it, which has to close it.
    template <class Open>
    auto With(const std::function<void(QDialog &)> &whileOpen, Open open)
    {
        QTimer::singleShot(0, this, [=] {
            auto *box = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            QVERIFY(box);
            const QPointer<QDialog> guard(box);
            whileOpen(*box);
            if (guard)
                guard->close(); // a failed check must not leave it open
        });
        return open();
    }

    static QPushButton *Button(QDialog &box, const char *name) { return box.findChild<QPushButton *>(name); }
    static QLabel *Text(QDialog &box) { return box.findChild<QLabel *>("boxText"); }

    std::optional<PlainDesk> m_desk;
    platform::QtBoxes m_boxes;
};

void TestQtBoxes::boxHasItsButtonsAndAnswers_data()
{
    QTest::addColumn<BoxButtons>("buttons");
    QTest::addColumn<QStringList>("captions");
    QTest::addColumn<QByteArray>("press");
    QTest::addColumn<BoxAnswer>("answer");
    QTest::newRow("OK") << BoxButtons::Ok << QStringList{ "OK" } << QByteArray("Ok") << BoxAnswer::Ok;
    const QStringList two{ "&Yes", "&No" };
    QTest::newRow("Yes of two") << BoxButtons::YesNo << two << QByteArray("Yes") << BoxAnswer::Yes;
    QTest::newRow("No of two") << BoxButtons::YesNo << two << QByteArray("No") << BoxAnswer::No;
    const QStringList three{ "&Yes", "&No", "Cancel" };
    QTest::newRow("Yes of three") << BoxButtons::YesNoCancel << three << QByteArray("Yes") << BoxAnswer::Yes;
    QTest::newRow("No of three") << BoxButtons::YesNoCancel << three << QByteArray("No") << BoxAnswer::No;
    QTest::newRow("Cancel") << BoxButtons::YesNoCancel << three << QByteArray("Cancel") << BoxAnswer::Cancel;
}

void TestQtBoxes::boxHasItsButtonsAndAnswers()
{
    QFETCH(BoxButtons, buttons);
    QFETCH(QStringList, captions);
    QFETCH(QByteArray, press);
    QFETCH(BoxAnswer, answer);
    QStringList found;
    const auto given = With(
        [&](QDialog &box) {
            for (const auto *button : box.findChildren<QPushButton *>())
                found << button->text();
            Button(box, press)->click();
        },
        [&] { return m_boxes.MessageBox("Sure?", buttons, {}); });
    QCOMPARE(found, captions);
    QCOMPARE(given, answer);
}

void TestQtBoxes::closingFromTheFrameGivesTheMildestAnswer_data()
{
    QTest::addColumn<BoxButtons>("buttons");
    QTest::addColumn<BoxAnswer>("answer");
    QTest::newRow("OK") << BoxButtons::Ok << BoxAnswer::Ok;
    QTest::newRow("two") << BoxButtons::YesNo << BoxAnswer::No;
    QTest::newRow("three") << BoxButtons::YesNoCancel << BoxAnswer::Cancel;
}

void TestQtBoxes::closingFromTheFrameGivesTheMildestAnswer()
{
    QFETCH(BoxButtons, buttons);
    QFETCH(BoxAnswer, answer);
    const auto open = [&] { return m_boxes.MessageBox("Sure?", buttons, {}); };
    QCOMPARE(With([](QDialog &box) { box.close(); }, open), answer);
    QCOMPARE(With([](QDialog &box) { QTest::keyClick(&box, Qt::Key_Escape); }, open), answer);
}

void TestQtBoxes::keysAnswer_data()
{
    QTest::addColumn<BoxButtons>("buttons");
    QTest::addColumn<QList<int>>("keys");
    QTest::addColumn<BoxAnswer>("answer");
    QTest::newRow("Enter takes the first")
        << BoxButtons::YesNo << QList<int>{ Qt::Key_Return } << BoxAnswer::Yes;
    QTest::newRow("blank presses it") << BoxButtons::Ok << QList<int>{ Qt::Key_Space } << BoxAnswer::Ok;
    QTest::newRow("tab and Enter") << BoxButtons::YesNo << QList<int>{ Qt::Key_Tab, Qt::Key_Return }
                                   << BoxAnswer::No;
    QTest::newRow("arrow and Enter") << BoxButtons::YesNoCancel
                                     << QList<int>{ Qt::Key_Right, Qt::Key_Right, Qt::Key_Return }
                                     << BoxAnswer::Cancel;
    QTest::newRow("letter y") << BoxButtons::YesNo << QList<int>{ Qt::Key_Y } << BoxAnswer::Yes;
    QTest::newRow("letter n") << BoxButtons::YesNoCancel << QList<int>{ Qt::Key_N } << BoxAnswer::No;
}

void TestQtBoxes::keysAnswer()
{
    QFETCH(BoxButtons, buttons);
    QFETCH(QList<int>, keys);
    QFETCH(BoxAnswer, answer);
    const auto given = With(
        [&](QDialog &box) {
            box.activateWindow();
            QApplication::processEvents();
            for (const int key : keys)
                QTest::keyClick(box.windowHandle(), static_cast<Qt::Key>(key));
        },
        [&] { return m_boxes.MessageBox("Sure?", buttons, {}); });
    QCOMPARE(given, answer);
}

void TestQtBoxes::boxesAreWorkedByKeysAndToldOf()
{
    const auto check = [](QDialog &box) {
        QCOMPARE(support::FaultsForKeyboardAndReader(box).join('\n'), QString());
    };
    With(check, [this] { return m_boxes.MessageBox("Save changes?", BoxButtons::YesNoCancel, {}); });
    With(check, [this] { return m_boxes.InputBox("Enter Password"); });
}

void TestQtBoxes::theWayOutLooksLikeOne()
{
    const auto ranks = [](QDialog &box) {
        QStringList found;
        for (const QPushButton *button : box.findChildren<QPushButton *>())
            found << button->property("rank").toString();
        return found;
    };
    With(
        [&](QDialog &box) {
            QCOMPARE(ranks(box), QStringList({ "main", "second", "second" }));
        },
        [this] { return m_boxes.MessageBox("Save changes?", BoxButtons::YesNoCancel, {}); });
    With(
        [&](QDialog &box) {
            QCOMPARE(ranks(box), QStringList({ "main", "second" }));
        },
        [this] { return m_boxes.InputBox("Enter Password"); });
    // On paper, whatever the room of the screen below.
    With([](QDialog &box) { QCOMPARE(box.property("room").toString(), QString("study")); },
         [this] { return m_boxes.MessageBox("Save successful", BoxButtons::Ok, {}); });
}

void TestQtBoxes::titleIsTheApplicationsUnlessGiven()
{
    QString title;
    const auto look = [&](QDialog &box) {
        title = box.windowTitle();
        box.close();
    };
    With(look, [&] { return m_boxes.MessageBox("Text", BoxButtons::Ok, {}); });
    QCOMPARE(title, "Tumblewick");
    With(look, [&] { return m_boxes.MessageBox("Text", BoxButtons::Ok, "List Already Exists"); });
    QCOMPARE(title, "List Already Exists");
    With(look, [&] { return m_boxes.InputBox("Text"); });
    QCOMPARE(title, "Tumblewick");
}

void TestQtBoxes::textIsNeverMarkup()
{
    for (const QString &text : { QString("<b>bold</b> & <img src=\"x\">"), QString("a &b && c"),
                                 QString("first\n\n  third"), QString("<h1>") + QString(5000, 'x') }) {
        QString shown;
        Qt::TextFormat format = Qt::AutoText;
        With(
            [&](QDialog &box) {
                shown = Text(box)->text().remove(QChar(0x200B));
                format = Text(box)->textFormat();
                QVERIFY(!Text(box)->buddy());
                box.close();
            },
            [&] { return m_boxes.MessageBox(text, BoxButtons::Ok, {}); });
        QCOMPARE(shown, text);
        QCOMPARE(format, Qt::PlainText);
    }
}

void TestQtBoxes::hugeTextScrollsOnTheDisplay_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("words") << QString("word ").repeated(20000);
    QTest::newRow("one endless word") << QString(20000, 'w');
    QTest::newRow("lines") << QString("line\r\n").repeated(3000);
}

void TestQtBoxes::hugeTextScrollsOnTheDisplay()
{
    QFETCH(QString, text);
    With(
        [&](QDialog &box) {
            const QRect space = box.screen()->availableGeometry();
            QVERIFY(box.height() < space.height() && box.width() < space.width());
            auto *scroller = box.findChild<QScrollArea *>();
            QVERIFY(scroller->verticalScrollBar()->maximum() > 0);
            QVERIFY(Text(box)->width() <= scroller->viewport()->width());
            // No word sticks out to the right: the text is no taller than the room that was made for it.
            QVERIFY(Text(box)->height() >= Text(box)->heightForWidth(Text(box)->width()));
            QVERIFY(box.rect().contains(Button(box, "Ok")->geometry()));
            QTest::keyClick(scroller, Qt::Key_PageDown);
            QVERIFY(scroller->verticalScrollBar()->value() > 0);
            Button(box, "Ok")->click();
        },
        [&] { return m_boxes.MessageBox(text, BoxButtons::Ok, {}); });
}

void TestQtBoxes::shortTextFits()
{
    for (const char *text :
         { "Sure?", "", "Please enter a name for the list to be saved as. ",
           "Run-time error '53':\r\n\r\nFile not found",
           "A text of some length, which does not fit into one line and so has to be broken into "
           "several of them, all of which are seen at once." }) {
        With(
            [&](QDialog &box) {
                auto *scroller = box.findChild<QScrollArea *>();
                QCOMPARE(scroller->verticalScrollBar()->maximum(), 0);
                QVERIFY(scroller->height() >= Text(box)->heightForWidth(scroller->viewport()->width()));
                QVERIFY(box.width() <= 600);
                box.close();
            },
            [&] { return m_boxes.MessageBox(text, BoxButtons::Ok, {}); });
    }
}

namespace {

class Character : public platform::OnTop {
public:
    QRect place;

private:
    QRect Hidden() const override { return place; }
};

} // namespace

void TestQtBoxes::charactersHideNothingOfABox()
{
    Character character;
    const auto placeOf = [&] {
        QRect place;
        With(
            [&](QDialog &box) {
                place = box.frameGeometry();
                box.close();
            },
            [&] {
                return m_boxes.MessageBox("Are you sure you want to delete star?", BoxButtons::YesNo, {});
            });
        return place;
    };
    const QRect free = placeOf();
    const QRect form = Two::Shared().Window()->frameGeometry();
    QVERIFY((free.center() - form.center()).manhattanLength() < 40);
    for (const QPoint &way : { QPoint(-100, -150), QPoint(60, 40), QPoint(free.width(), 0), QPoint(0, 0) }) {
        character.place = QRect(free.topLeft() + way, QSize(196, 244));
        const QRect place = placeOf();
        QVERIFY2(!place.intersects(character.place), qPrintable(QDebug::toString(place)));
        QVERIFY(Two::Shared().Window()->screen()->availableGeometry().contains(place));
    }
}

void TestQtBoxes::boxGoesAsideForWhoComesToRestOnIt()
{
    Character character, other;
    With(
        [&](QDialog &box) {
            const QRect began = box.frameGeometry();
            const QRect space = box.screen()->availableGeometry();
            other.place = QRect(0, 0, 50, 50); // beside it
            QTest::qWait(800);
            QCOMPARE(box.frameGeometry(), began);
            // On the way over the box.
            for (int step = 0; step < 12; ++step) {
                character.place = QRect(began.topLeft() + QPoint(10 * step, 0), QSize(196, 244));
                QTest::qWait(60);
                QCOMPARE(box.frameGeometry(), began);
            }
            QTRY_VERIFY(!box.frameGeometry().intersects(character.place));
            QVERIFY(!box.frameGeometry().intersects(other.place));
            QVERIFY(space.contains(box.frameGeometry()));
            QCOMPARE(box.frameGeometry().size(), began.size());
            // The user has his reasons.
            box.move(began.topLeft());
            QTest::qWait(800);
            QCOMPARE(box.frameGeometry(), began);
            // The other comes too, and there is room beside both. Nothing moves under a hand.
            QTest::mousePress(box.windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
            other.place = QRect(began.center(), QSize(150, 150));
            QTest::qWait(800);
            QCOMPARE(box.frameGeometry(), began);
            QTest::mouseRelease(box.windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
            QTRY_VERIFY(!box.frameGeometry().intersects(other.place));
            QVERIFY(!box.frameGeometry().intersects(character.place));
            // Once gone, nobody brings it back.
            const QRect aside = box.frameGeometry();
            character.place = other.place = QRect();
            QTest::qWait(800);
            QCOMPARE(box.frameGeometry(), aside);
            box.close();
        },
        [&] { return m_boxes.InputBox("Password?"); });
}

void TestQtBoxes::boxCannotBeMadeSmallOrLarge()
{
    With(
        [&](QDialog &box) {
            const Qt::WindowFlags flags = box.windowFlags();
            QVERIFY(flags & Qt::CustomizeWindowHint); // else the desktop gives it all buttons
            QVERIFY(flags & Qt::WindowTitleHint && flags & Qt::WindowCloseButtonHint);
            QVERIFY(!(flags & Qt::WindowMinMaxButtonsHint));
            box.close();
        },
        [&] { return m_boxes.MessageBox("Text", BoxButtons::Ok, {}); });
}

void TestQtBoxes::typedTextComesBack_data()
{
    QTest::addColumn<QByteArray>("how");
    QTest::addColumn<QString>("result");
    QTest::newRow("OK") << QByteArray("Ok") << "typed";
    QTest::newRow("Cancel") << QByteArray("Cancel") << "";
    QTest::newRow("Enter") << QByteArray("Enter") << "typed";
    QTest::newRow("Escape") << QByteArray("Escape") << "";
    QTest::newRow("frame") << QByteArray("frame") << "";
    QTest::newRow("letters of buttons are only typed") << QByteArray("letters") << "ync";
}

void TestQtBoxes::typedTextComesBack()
{
    QFETCH(QByteArray, how);
    QFETCH(QString, result);
    const QString given = With(
        [&](QDialog &box) {
            box.activateWindow();
            QApplication::processEvents();
            auto *field = box.findChild<QLineEdit *>("boxField");
            QCOMPARE(field->text(), QString());
            QVERIFY(field->hasFocus());
            QTest::keyClicks(field, how == "letters" ? "ync" : "typed");
            if (how == "Enter")
                QTest::keyClick(field, Qt::Key_Return);
            else if (how == "Escape")
                QTest::keyClick(field, Qt::Key_Escape);
            else if (how == "frame")
                box.close();
            else
                Button(box, how == "letters" ? "Ok" : how.constData())->click();
        },
        [&] { return m_boxes.InputBox("Enter Password"); });
    QCOMPARE(given, result);
}

void TestQtBoxes::screensAreOffWhileABoxIsOpen()
{
    One::Shared().cmdGo_Click = [] { g_log << "One go"; };
    Two::Shared().cmdGo_Click = [] { g_log << "Two go"; };
    QWidget character(nullptr, Qt::ToolTip | Qt::FramelessWindowHint);
    auto *onIt = new QPushButton("poke", &character);
    connect(onIt, &QPushButton::clicked, this, [] { g_log << "character poked"; });
    character.show();
    const auto pressAll = [&] {
        for (QPushButton *button : { One::Shared().cmdGo, Two::Shared().cmdGo, onIt }) {
            QWindow *window = button->window()->windowHandle();
            QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier,
                              button->mapTo(button->window(), button->rect().center()));
        }
        QApplication::processEvents();
    };
    g_log.clear();
    With(
        [&](QDialog &box) {
            pressAll();
            One::Shared().Window()->windowHandle()->close();
            QApplication::processEvents();
            QVERIFY(One::Shared().IsLoaded());
            box.close();
        },
        [&] { return m_boxes.MessageBox("Text", BoxButtons::Ok, {}); });
    QCOMPARE(g_log, QStringList({ "character poked" }));
    pressAll();
    QCOMPARE(g_log, QStringList({ "character poked", "One go", "Two go", "character poked" }));
}

void TestQtBoxes::clickOnAScreenDoesNotTakeTheKeysFromABox()
{
    for (QWidget *window : { Two::Shared().Window(), One::Shared().Window() }) {
        With(
            [&](QDialog &box) {
                window->activateWindow();
                QApplication::processEvents();
                QApplication::processEvents();
                QVERIFY(box.isActiveWindow());
                box.close();
            },
            [&] { return m_boxes.MessageBox("Text", BoxButtons::Ok, {}); });
    }
}

void TestQtBoxes::timersTickWhileABoxIsOpen()
{
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        if (++ticks == 3)
            QApplication::activeModalWidget()->close();
    });
    timer.start(1);
    m_boxes.MessageBox("Text", BoxButtons::Ok, {});
    QCOMPARE(ticks, 3);
}

void TestQtBoxes::boxOverABoxHoldsOffTheFirstOne()
{
    QStringList order;
    With(
        [&](QDialog &outer) {
            With(
                [&](QDialog &inner) {
                    QCOMPARE(inner.parentWidget(), &outer);
                    order << "inner";
                    inner.close();
                },
                [&] { return m_boxes.MessageBox("Inner", BoxButtons::Ok, {}); });
            order << "outer";
            outer.close();
        },
        [&] { return m_boxes.MessageBox("Outer", BoxButtons::Ok, {}); });
    QCOMPARE(order, QStringList({ "inner", "outer" }));
}

void TestQtBoxes::boxOutlivesTheScreenItCameFrom()
{
    Two::Shared().cmdGo_Click = [&] {
        With(
            [&](QDialog &box) {
                Two::Shared().Unload();
                m_desk->Settle();
                QVERIFY(box.isVisible());
                Button(box, "Yes")->click();
            },
            [&] {
                g_log << (m_boxes.MessageBox("Text", BoxButtons::YesNo, {}) == BoxAnswer::Yes ? "yes" : "no");
            });
    };
    Two::Shared().cmdGo->click();
    QCOMPARE(g_log.last(), "yes");
    m_desk->Settle();
    QVERIFY(!Two::Shared().IsLoaded());
}

void TestQtBoxes::boxNeedsNoScreen()
{
    platform::ForgetScreens();
    const auto answer = With([](QDialog &box) { Button(box, "No")->click(); },
                             [&] { return m_boxes.MessageBox("Text", BoxButtons::YesNo, {}); });
    QCOMPARE(answer, BoxAnswer::No);
}

void TestQtBoxes::quickWorkShowsNothing()
{
    std::thread::id worker;
    int boxes = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] { boxes += QApplication::activeModalWidget() ? 1 : 0; });
    timer.start(1);
    m_boxes.WhileBusy("Copying bears ...", [&] { worker = std::this_thread::get_id(); });
    QVERIFY(worker != std::thread::id() && worker != std::this_thread::get_id());
    QCOMPARE(boxes, 0);
    QVERIFY(!QApplication::overrideCursor());
}

void TestQtBoxes::slowWorkShowsABoxThatCannotBeClosed()
{
    One::Shared().cmdGo_Click = [] { g_log << "One go"; };
    Two::Shared().cmdGo_Click = [] { g_log << "Two go"; };
    Two::Shared().cmdGo->setText("&Go");
    Two::Shared().Window()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(Two::Shared().Window()));
    const auto press = [] {
        QTest::keyClick(Two::Shared().Window()->windowHandle(), Qt::Key_G, Qt::AltModifier);
        QTest::mouseClick(One::Shared().Window()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          One::Shared().cmdGo->mapTo(One::Shared().Window(), QPoint(5, 5)));
    };
    QSemaphore done;
    QString text;
    QCursor pointer;
    int buttons = -1;
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        if (++ticks == 1)
            press(); // too early for the box, and yet nothing may come of it
        auto *box = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!box || !text.isEmpty())
            return;
        QTest::keyClick(box, Qt::Key_Escape);
        box->close();
        press();
        QVERIFY(box->isVisible());
        text = Text(*box)->text();
        buttons = static_cast<int>(box->findChildren<QPushButton *>().size());
        pointer = QApplication::overrideCursor() ? *QApplication::overrideCursor() : QCursor();
        done.release();
    });
    timer.start(1);
    g_log.clear();
    m_boxes.WhileBusy("Copying <b>bears</b> ...", [&] { done.acquire(); });
    QCOMPARE(text, "Copying <b>bears</b> ...");
    QCOMPARE(buttons, 0);
    QCOMPARE(pointer.shape(), Qt::WaitCursor);
    QVERIFY(ticks > 1);
    QVERIFY(!QApplication::overrideCursor());
    QVERIFY(!QApplication::activeModalWidget());
    QApplication::processEvents();
    QCOMPARE(g_log, QStringList());
    Two::Shared().Window()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(Two::Shared().Window()));
    press();
    QTRY_COMPARE(g_log, QStringList({ "One go", "Two go" })); // a letter takes its time
}

void TestQtBoxes::workThatFailsPassesItsErrorOn()
{
    qint32 raised = 0;
    try {
        m_boxes.WhileBusy("Copying bears ...", [] { throw platform::Error(platform::kDiskFull); });
    } catch (const platform::Error &error) {
        raised = error.Number();
    }
    QCOMPARE(raised, qint32(platform::kDiskFull));
    QCOMPARE(With([](QDialog &box) { box.close(); }, [&] { return m_boxes.MessageBox("Text", {}, {}); }),
             BoxAnswer::Ok);
}

QTEST_MAIN(TestQtBoxes)
#include "TestQtBoxes.moc"
