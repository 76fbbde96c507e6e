#include "game/ScorePanel.h"
#include "platform/forms/FittingLabel.h"
#include "platform/forms/Resizer.h"
#include "shell/Appearance.h"
#include "ui_frmChooseList1.h"
#include "ui_frmMenu1.h"
#include "ui_frmNumPlayers1.h"
#include "ui_frmPlayerNames1.h"
#include "ui_frmSpell1.h"
#include "ui_frmSpelling1.h"

#include <QAbstractTextDocumentLayout>
#include <QFontInfo>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>
#include <QTreeWidget>

#include <functional>
#include <memory>

using namespace tumblewick;

namespace {

template <class Form>
std::unique_ptr<QWidget> Made(Room room)
{
    auto window = std::make_unique<QWidget>();
    Form().setupUi(window.get());
    DressWindow(*window, room);
    return window;
}

struct Case {
    const char *name;
    std::function<std::unique_ptr<QWidget>()> make;
    bool scales;
};

const std::vector<Case> kScreens = {
    { "menu", [] { return Made<Ui::frmMenu1>(Room::Menu); }, true },
    { "number of players", [] { return Made<Ui::frmNumPlayers1>(Room::SetUp); }, false },
    { "names", [] { return Made<Ui::frmPlayerNames1>(Room::SetUp); }, false },
    { "lists", [] { return Made<Ui::frmChooseList1>(Room::SetUp); }, true },
    { "game", [] { return Made<Ui::frmSpell1>(Room::Game); }, true },
};

// Controls behind the others, and those that are never seen at the same time.
bool MayBeCovered(const QWidget &control)
{
    const QString type = platform::Resizer::TypeOf(control);
    return type == "Shape" || type == "Image" || control.objectName() == "txtAnswer";
}

} // namespace

// The children's screens as they are seen.
class TestAppearance : public QObject {
    Q_OBJECT

    static void AddScreens(bool onlyScaled = false)
    {
        QTest::addColumn<int>("screen");
        QTest::addColumn<QSize>("size");
        for (size_t screen = 0; screen < kScreens.size(); ++screen)
            for (const QSize size : { QSize(), QSize(1024, 768), QSize(1366, 768), QSize(1536, 864) })
                if (size.isEmpty() ? !onlyScaled : kScreens[screen].scales)
                    QTest::addRow("%s %d", kScreens[screen].name, size.width())
                        << static_cast<int>(screen) << size;
    }

    // Made at its design size and brought to `size` the way the screens do it: buttons keep their size
    // everywhere, their height on the screen but in the game, and the labels of the list screen theirs.
    static std::unique_ptr<QWidget> Scaled(int screen, QSize size)
    {
        const QString name = kScreens[static_cast<size_t>(screen)].name;
        auto window = kScreens[static_cast<size_t>(screen)].make();
        if (size.isEmpty())
            return window;
        using platform::Resizer;
        Resizer resizer(*window, [&name](const QString &type, Resizer::Planned &planned, QWidget &control) {
            const Resizer::Planned present = Resizer::Present(control);
            if (type != "CommandButton" && !(type == "Label" && name == "lists"))
                return;
            planned.width = present.width;
            planned.height = present.height;
            planned.fontSize = present.fontSize;
            if (name != "game")
                planned.top = present.top;
        });
        window->resize(size);
        resizer.Apply();
        return window;
    }

private slots:
    void initTestCase()
    {
        ApplyAppearance(*qApp);
        QVERIFY2(QFontInfo(QFont("Comic Sans MS")).family() != QFontInfo(QFont("no such family")).family(),
                 "the fonts of the game are not installed");
    }

    void everyButtonHasItsPicture()
    {
        for (const Case &screen : kScreens) {
            const auto window = screen.make();
            for (const QPushButton *button : window->findChildren<QPushButton *>()) {
                QVERIFY2(!button->icon().isNull(), qPrintable(button->objectName()));
                const QImage image = button->icon().pixmap(32, 32).toImage();
                int painted = 0;
                for (int y = 0; y < image.height(); ++y)
                    for (int x = 0; x < image.width(); ++x)
                        painted += image.pixelColor(x, y).alpha() > 0;
                QVERIFY2(painted > 150, qPrintable(button->objectName()));
            }
        }
    }

    void theSameNameLooksDifferentByScreen_data()
    {
        QTest::addColumn<QString>("screen");
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("rank");
        QTest::newRow("add a word") << "frmSpelling1"
                                    << "Command1"
                                    << "main";
        QTest::newRow("delete a word") << "frmSpelling1"
                                       << "Command2"
                                       << "danger";
        QTest::newRow("quiz to menu") << "frmQuiz1"
                                      << "Command2"
                                      << "second";
        QTest::newRow("delete a list") << "frmList"
                                       << "cdmDeleteSpell"
                                       << "danger";
        QTest::newRow("back, anywhere") << "frmExpList"
                                        << "cmdback"
                                        << "second";
        QTest::newRow("unknown") << "frmList"
                                 << "Command9"
                                 << "";
    }
    void theSameNameLooksDifferentByScreen()
    {
        QFETCH(QString, screen);
        QFETCH(QString, button);
        QFETCH(QString, rank);
        QWidget window;
        window.setObjectName(screen);
        QPushButton control(&window);
        control.setObjectName(button);
        DressWindow(window, Room::Study);
        QCOMPARE(control.property("rank").toString(), rank);
        QCOMPARE(control.icon().pixmap(32, 32).isNull(), rank.isEmpty());
    }

    // The scores stand as low in their panel as they can, but none is pushed out of it.
    void theScoresSinkInTheirPanel_data()
    {
        QTest::addColumn<int>("players");
        QTest::addColumn<int>("pointSize");
        QTest::addColumn<bool>("isShownFirst");
        QTest::newRow("one") << 1 << 24 << true;
        QTest::newRow("three") << 3 << 24 << true;
        QTest::newRow("three, not shown yet") << 3 << 24 << false;
        QTest::newRow("four") << 4 << 20 << true;
        QTest::newRow("five") << 5 << 16 << true;
        QTest::newRow("five, not shown yet") << 5 << 16 << false;
    }
    void theScoresSinkInTheirPanel()
    {
        QFETCH(int, players);
        QFETCH(int, pointSize);
        QFETCH(bool, isShownFirst);
        const auto window = kScreens.back().make();
        auto *panel = window->findChild<QTextEdit *>("txtScore");
        if (isShownFirst)
            window->show();
        ShowInPanel(*panel, "typed", kTypedWordSize);
        ShowInPanel(*panel, QString("Rosa    3 out of 3 100%\n").repeated(players), pointSize);
        window->show();
        const QTextDocument &document = *panel->document();
        const QAbstractTextDocumentLayout &layout = *document.documentLayout();
        const qreal first = layout.blockBoundingRect(document.firstBlock()).top();
        const qreal last = layout.blockBoundingRect(document.findBlockByNumber(players - 1)).bottom();
        const qreal descent = 4; // what no letter of a score reaches at the foot of a line
        QVERIFY2(last - descent <= panel->viewport()->height(), qPrintable(QString::number(last)));
        QVERIFY2(first >= std::min(40.0, panel->viewport()->height() - (last - first) - 6),
                 qPrintable(QString::number(first)));
        QCOMPARE(panel->verticalScrollBar()->value(), 0);
    }

    void aLongNameOfAListStaysOnItsSign()
    {
        const auto window = kScreens.back().make();
        auto *name = window->findChild<platform::FittingLabel *>("lblListName");
        QVERIFY(name);
        name->setText("A quiz with a rather long name, about rivers and everything else that flows");
        window->show();
        QCOMPARE(name->ShownLines().size(), qsizetype(1));
        const QString shown = name->ShownLines().front();
        QVERIFY2(name->fontMetrics().horizontalAdvance(shown) <= name->width(), qPrintable(shown));
        QVERIFY2(shown.startsWith("A quiz") && shown.endsWith("flows"), qPrintable(shown));
        // Between the stars of the sign.
        const QRect sign = window->findChild<QWidget *>("Shape3")->geometry();
        QVERIFY(sign.adjusted(36, 0, -36, 0).contains(name->geometry()));
        QCOMPARE(sign.center().x(), name->geometry().center().x());
    }

    void anEntryThatHasTheFocusIsAsDarkAsAnyOther_data()
    {
        QTest::addColumn<int>("room");
        QTest::addColumn<bool>("isTree");
        QTest::newRow("list of lists") << int(Room::SetUp) << false;
        QTest::newRow("list of a grown-up") << int(Room::Study) << false;
        QTest::newRow("tree") << int(Room::Study) << true;
    }
    void anEntryThatHasTheFocusIsAsDarkAsAnyOther()
    {
        QFETCH(int, room);
        QFETCH(bool, isTree);
        QWidget window;
        QListWidget list(&window);
        list.addItem("mmmmmm");
        list.setCurrentRow(0);
        QTreeWidget tree(&window);
        tree.addTopLevelItem(new QTreeWidgetItem({ "mmmmmm" }));
        tree.setCurrentItem(tree.topLevelItem(0));
        auto *view = isTree ? static_cast<QAbstractItemView *>(&tree) : &list;
        view->raise();
        DressWindow(window, static_cast<Room>(room));
        window.show();
        view->setFocus();
        QTRY_VERIFY(view->hasFocus());
        const QImage image =
            view->viewport()->grab(view->visualRect(view->currentIndex()).adjusted(4, 4, -4, -4)).toImage();
        int darkest = 255;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                darkest = std::min(darkest, image.pixelColor(x, y).red());
        QCOMPARE(darkest, 0x2a);
    }

    void theTitlesOfAListAreAsLargeAsItsRows()
    {
        const auto window = Made<Ui::frmSpelling1>(Room::Study);
        platform::Resizer resizer(*window);
        window->resize(1536, 864);
        resizer.Apply();
        window->show();
        QCoreApplication::processEvents();
        const auto *list = window->findChild<QTreeView *>("List1");
        // The viewport is what they are painted on.
        QCOMPARE(QFontInfo(list->header()->viewport()->font()).pixelSize(),
                 QFontInfo(list->font()).pixelSize());
    }

    void aPictureGrowsWithItsButton()
    {
        QWidget window;
        window.setObjectName("frmSettings");
        QPushButton button(&window);
        button.setObjectName("cmdSave");
        button.setGeometry(0, 0, 200, 40);
        button.setIconSize(QSize(36, 32));
        DressWindow(window, Room::Study);
        window.show();
        QCOMPARE(button.iconSize(), QSize(36, 32));
        button.resize(400, 60);
        QCOMPARE(button.iconSize(), QSize(54, 48));
        button.resize(200, 40);
        QCOMPARE(button.iconSize(), QSize(36, 32));
    }

    void theHubHasAnOrnamentWhereThereIsRoom_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("hasRoom");
        QTest::newRow("narrow") << QSize(800, 600) << false;
        QTest::newRow("usual") << QSize(1024, 768) << false;
        QTest::newRow("wide") << QSize(1366, 768) << true;
        QTest::newRow("large") << QSize(1536, 864) << true;
    }
    void theHubHasAnOrnamentWhereThereIsRoom()
    {
        QFETCH(QSize, size);
        QFETCH(bool, hasRoom);
        QImage pictures[2];
        for (int index : { 0, 1 }) {
            QWidget window;
            window.setObjectName(index == 0 ? "frmList" : "frmDelete");
            DressWindow(window, Room::Study);
            window.resize(size);
            pictures[index] = window.grab().toImage();
        }
        QCOMPARE(pictures[0] != pictures[1], hasRoom);
    }

    void theBadgesOfTheAnswersDiffer()
    {
        QList<QImage> seen;
        for (int answer = 1; answer <= 4; ++answer) {
            const QImage image = QIcon(QString(":/answers/%1.svg").arg(answer)).pixmap(32, 32).toImage();
            QVERIFY(!image.isNull());
            QVERIFY(!seen.contains(image));
            seen.append(image);
        }
    }

    void fontsAreInPixelsAndLargeEnough()
    {
        for (const Case &screen : kScreens) {
            const auto window = screen.make();
            for (const QWidget *control : window->findChildren<QWidget *>())
                if (!control->objectName().startsWith("qt_"))
                    QVERIFY2(control->font().pixelSize() >= 16, qPrintable(control->objectName()));
        }
    }

    void textsFit_data() { AddScreens(); }
    void textsFit()
    {
        QFETCH(int, screen);
        QFETCH(QSize, size);
        const auto window = Scaled(screen, size);
        const int borders = 12;
        for (const QPushButton *button : window->findChildren<QPushButton *>()) {
            const QSize text = button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
            QVERIFY2(text.width() + button->iconSize().width() + borders <= button->width(),
                     qPrintable(button->objectName()));
            QVERIFY2(std::max(text.height(), button->iconSize().height()) + 8 <= button->height(),
                     qPrintable(button->objectName()));
        }
        for (const QLabel *label : window->findChildren<QLabel *>())
            QVERIFY2(label->fontMetrics().horizontalAdvance(label->text()) <= label->width() &&
                         label->fontMetrics().height() <= label->height(),
                     qPrintable(label->objectName()));
        for (const QGroupBox *frame : window->findChildren<QGroupBox *>())
            QVERIFY2(frame->fontMetrics().horizontalAdvance(frame->title()) <= frame->width(),
                     qPrintable(frame->objectName()));
    }

    void nothingOverlapsOrLeavesTheWindow_data() { AddScreens(); }
    void nothingOverlapsOrLeavesTheWindow()
    {
        QFETCH(int, screen);
        QFETCH(QSize, size);
        const auto window = Scaled(screen, size);
        const auto controls = window->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
        for (int one = 0; one < controls.size(); ++one) {
            if (MayBeCovered(*controls[one]))
                continue;
            QVERIFY2(window->rect().contains(controls[one]->geometry()),
                     qPrintable(controls[one]->objectName()));
            for (int other = 0; other < one; ++other)
                QVERIFY2(MayBeCovered(*controls[other]) ||
                             !controls[one]->geometry().intersects(controls[other]->geometry()),
                         qPrintable(controls[one]->objectName() + " on " + controls[other]->objectName()));
        }
    }

    void everyControlThatTakesTheFocusHasAName()
    {
        for (const Case &screen : kScreens) {
            const auto window = screen.make();
            for (const QWidget *control : window->findChildren<QWidget *>())
                if (control->focusPolicy() != Qt::NoFocus && !control->objectName().startsWith("qt_"))
                    QVERIFY2(!control->accessibleName().isEmpty(), qPrintable(control->objectName()));
        }
    }
};

QTEST_MAIN(TestAppearance)
#include "TestAppearance.moc"
