#include "platform/Error.h"
#include "platform/forms/ListView.h"
#include "support/NumberRaised.h"

#include <QAbstractItemModelTester>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QHelpEvent>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

#include <optional>

using platform::ListView;
using support::NumberRaised;

// The list in columns, with its entries counted from 1.
class TestListView : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_list.emplace();
        m_list->SetColumns({ "Word", "Sound" });
        m_list->resize(400, 300);
        m_list->show();
        m_list->activateWindow();
        m_list->setFocus();
    }
    void cleanup() { m_list.reset(); }

    void entriesAreCountedFromOne()
    {
        Fill({ "cat", "dog" });
        m_list->Item(2)->SetSubItem(1, "dawg");
        QCOMPARE(m_list->Count(), 2);
        QCOMPARE(m_list->Item(1)->Text(), QString("cat"));
        QCOMPARE(m_list->Item(1)->SubItem(1), QString());
        QCOMPARE(m_list->Item(2)->SubItem(1), QString("dawg"));
        QCOMPARE(m_list->Item(2)->Index(), 2);
        m_list->Item(1)->SetText("cow");
        QCOMPARE(Seen(), QStringList({ "cow", "dog" }));
    }

    void whatIsNotThereRaises9()
    {
        Fill({ "cat" });
        for (const int index : { -1, 0, 2 }) {
            QCOMPARE(NumberRaised([&] { m_list->Item(index); }), 9);
            QCOMPARE(NumberRaised([&] { m_list->Remove(index); }), 9);
            QCOMPARE(NumberRaised([&] { m_list->Item(1)->SubItem(index); }), 9);
            QCOMPARE(NumberRaised([&] { m_list->Item(1)->SetSubItem(index, "x"); }), 9);
        }
        for (const int column : { -1, 0, 3 }) {
            QCOMPARE(NumberRaised([&] { m_list->SetColumnTwips(column, 1500); }), 9);
            QCOMPARE(NumberRaised([&] { m_list->ColumnTwips(column); }), 9);
        }
    }

    void aRemovedEntryKeepsItsTextsAndStandsNowhere()
    {
        Fill({ "cat", "dog" });
        const auto item = m_list->Item(1);
        m_list->Remove(1);
        item->SetText("cow");
        QCOMPARE(item->Text(), QString("cow"));
        QCOMPARE(NumberRaised([&] { item->Index(); }), 9);
        QCOMPARE(Seen(), QStringList({ "dog" }));
    }

    void anEmptyListHasNothingSelected()
    {
        QVERIFY(m_list->SelectedItem().IsNothing());
        QCOMPARE(NumberRaised([&] { m_list->SelectedItem()->Text(); }), 91);
        Fill({ "cat" });
        m_list->Remove(1);
        QVERIFY(m_list->SelectedItem().IsNothing());
        m_list->Refill([] {});
        QVERIFY(m_list->SelectedItem().IsNothing());
    }

    void theFirstEntryIsSelectedUntilTheUserChooses()
    {
        Fill({ "cat", "dog" });
        QCOMPARE(m_list->SelectedItem()->Text(), QString("cat"));
        Click(1);
        QCOMPARE(m_list->SelectedItem()->Text(), QString("dog"));
        Fill({ "cow" });
        QCOMPARE(m_list->SelectedItem()->Text(), QString("dog"));
        m_list->Refill([] {});
        Fill({ "pig" });
        QCOMPARE(m_list->SelectedItem()->Text(), QString("pig"));
    }

    void aRefillKeepsThePlaceOfTheSelection()
    {
        Fill({ "cat", "dog", "cow" });
        m_list->Select(2);
        QCOMPARE(Told([&] { m_list->Refill([this] { Fill({ "ant", "bee", "fly" }); }); }), QStringList());
        QCOMPARE(Seen(), QStringList({ "ant", "bee", "fly" }));
        QCOMPARE(m_list->SelectedItem()->Text(), QString("bee"));
        m_list->Refill([this] { Fill({ "ant" }); }); // which has no second entry
        QCOMPARE(m_list->SelectedItem()->Text(), QString("ant"));
    }

    void aRefillThatBreaksOffKeepsItToo()
    {
        Fill({ "cat", "dog", "cow" });
        m_list->Select(2);
        QCOMPARE(NumberRaised([&] {
                     m_list->Refill([this] {
                         Fill({ "ant", "bee" });
                         throw platform::Error(platform::kDeviceError);
                     });
                 }),
                 int(platform::kDeviceError));
        QCOMPARE(m_list->SelectedItem()->Text(), QString("bee"));
    }

    void behindARemovalTheNeighbourIsSelected()
    {
        Fill({ "cat", "dog", "cow" });
        m_list->Select(2);
        m_list->Remove(2);
        QCOMPARE(m_list->SelectedItem()->Text(), QString("cow"));
        m_list->Remove(2);
        QCOMPARE(m_list->SelectedItem()->Text(), QString("cat"));
    }

    void nothingTakesTheSelectionFromAnEntryButAnother()
    {
        Fill({ "cat", "dog" });
        Click(1);
        QTest::mouseClick(m_list->viewport(), Qt::LeftButton, Qt::ControlModifier, Centre(1));
        QCOMPARE(m_list->SelectedItem()->Text(), QString("dog"));
        QTest::mouseClick(m_list->viewport(), Qt::LeftButton, {}, QPoint(20, 250));
        QCOMPARE(m_list->SelectedItem()->Text(), QString("dog"));
    }

    void aClickIsToldAlsoBesideTheEntries()
    {
        Fill({ "cat", "dog" });
        QSignalSpy clicked(&*m_list, &ListView::Clicked);
        Click(1);
        QCOMPARE(clicked.size(), 1);
        Click(1);
        QCOMPARE(clicked.size(), 2);
        QTest::mouseClick(m_list->viewport(), Qt::LeftButton, {}, QPoint(20, 250));
        QCOMPARE(clicked.size(), 3);
        m_list->Select(1);
        QCOMPARE(clicked.size(), 3);
        QTest::mouseClick(m_list->header()->viewport(), Qt::LeftButton);
        QCOMPARE(clicked.size(), 3);
    }

    void aDoubleClickIsToldBehindOneClick()
    {
        Fill({ "cat", "dog" });
        const QStringList told = Told([&] {
            Click(1);
            QTest::mouseDClick(m_list->viewport(), Qt::LeftButton, {}, Centre(1));
        });
        // The test's double click is press, release, press, release with the last press a double one.
        QCOMPARE(told.last(), QString("double dog"));
        QCOMPARE(told.count("double dog"), 1);
        QCOMPARE(told.first(), QString("click dog"));
        // The next click is a click again.
        QCOMPARE(Told([&] { Click(0); }), QStringList({ "click cat" }));
    }

    void keysSelectAndAreTold()
    {
        Fill({ "cat", "dog" });
        QCOMPARE(Told([&] { QTest::keyClick(&*m_list, Qt::Key_Down); }), QStringList({ "click dog" }));
        QCOMPARE(Told([&] { QTest::keyClick(&*m_list, Qt::Key_Down); }), QStringList());
        QCOMPARE(Told([&] { QTest::keyClick(&*m_list, Qt::Key_Home); }), QStringList({ "click cat" }));
    }

    void enterDoubleClicksWhereThatIsOffered()
    {
        Fill({ "cat", "dog" });
        const auto enter = [&] { QTest::keyClick(&*m_list, Qt::Key_Return); };
        QCOMPARE(Told(enter), QStringList());
        m_list->SetDoubleClickCaption("Edit");
        QCOMPARE(Told(enter), QStringList({ "click cat", "double cat" }));
        m_list->Refill([] {});
        QCOMPARE(Told(enter), QStringList());
    }

    void theDeleteKeyPressesTheButton()
    {
        QPushButton button;
        QSignalSpy pressed(&button, &QPushButton::clicked);
        QTest::keyClick(&*m_list, Qt::Key_Delete);
        m_list->SetDeleteButton(button);
        QTest::keyClick(&*m_list, Qt::Key_Delete);
        QCOMPARE(pressed.size(), 0); // nothing there to delete
        Fill({ "cat" });
        QTest::keyClick(&*m_list, Qt::Key_Delete);
        QCOMPARE(pressed.size(), 1);
        button.setEnabled(false);
        QTest::keyClick(&*m_list, Qt::Key_Delete);
        QCOMPARE(pressed.size(), 1);
    }

    void theContextMenuOffersTheSame()
    {
        QPushButton button("&Delete Word");
        QSignalSpy pressed(&button, &QPushButton::clicked);
        m_list->SetDeleteButton(button);
        m_list->SetDoubleClickCaption("&Edit");
        QVERIFY(Menu().isEmpty());
        Fill({ "cat", "dog" });
        QCOMPARE(Menu(), QStringList({ "&Edit", "&Delete Word" }));
        QCOMPARE(Told([&] { Menu("&Edit"); }), QStringList({ "click cat", "double cat" }));
        Menu("&Delete Word");
        QCOMPARE(pressed.size(), 1);
        m_list->sortByColumn(0, Qt::DescendingOrder);
        QCOMPARE(Seen(), QStringList({ "dog", "cat" }));
        Menu("Show in the order of the &list");
        QCOMPARE(Seen(), QStringList({ "cat", "dog" }));
    }

    void aRightClickSelectsAndIsToldWhenThatIsAnother()
    {
        Fill({ "cat", "dog" });
        const auto press = [&](int row) {
            return Told([&] { QTest::mouseClick(m_list->viewport(), Qt::RightButton, {}, Centre(row)); });
        };
        QCOMPARE(press(0), QStringList());
        QCOMPARE(press(1), QStringList({ "click dog" }));
    }

    void sortingIsForTheEyeAlone()
    {
        const QAbstractItemModelTester tester(m_list->model());
        Fill({ "cow", "Ant", "bee" });
        m_list->Select(3);
        ClickTitle(0);
        QCOMPARE(Seen(), QStringList({ "Ant", "bee", "cow" }));
        QCOMPARE(m_list->Item(1)->Text(), QString("cow"));
        QCOMPARE(m_list->SelectedItem()->Text(), QString("bee"));
        QCOMPARE(m_list->SelectedItem()->Index(), 3);
        Fill({ "bat" });
        QCOMPARE(Seen(), QStringList({ "Ant", "bat", "bee", "cow" }));
        QCOMPARE(m_list->Item(4)->Text(), QString("bat"));
        ClickTitle(0);
        QCOMPARE(Seen(), QStringList({ "cow", "bee", "bat", "Ant" }));
        m_list->Remove(3); // bee, which has bat behind it here
        QCOMPARE(m_list->SelectedItem()->Text(), QString("bat"));
        ClickTitle(0);
        QCOMPARE(Seen(), QStringList({ "cow", "Ant", "bat" }));
    }

    void anEditedEntryStaysUnderTheEye()
    {
        Fill({ "cow", "ant", "bee" });
        m_list->sortByColumn(0, Qt::AscendingOrder);
        m_list->Item(2)->SetText("zebra");
        QCOMPARE(Seen(), QStringList({ "zebra", "bee", "cow" }));
    }

    void columnsAreMeasuredInTwips()
    {
        m_list->SetColumnTwips(1, 3000);
        m_list->SetColumnTwips(2, 1514);
        QCOMPARE(m_list->ColumnTwips(1), 3000);
        QCOMPARE(m_list->ColumnTwips(2), 1500);
        QCOMPARE(m_list->columnWidth(0), 200);
    }

    void halvesOfTheWholeWidthNeedNoScrollBar()
    {
        Fill(QStringList(QList<QString>(100, QString(80, 'w'))));
        m_list->SetColumnTwips(1, 400 * 15 / 2);
        m_list->SetColumnTwips(2, 400 * 15 / 2);
        QCoreApplication::processEvents();
        QVERIFY(!m_list->horizontalScrollBar()->isVisible());
        QVERIFY(m_list->verticalScrollBar()->isVisible());
        m_list->header()->resizeSection(0, 600);
        QCoreApplication::processEvents();
        QVERIFY(m_list->horizontalScrollBar()->isVisible());
    }

    void theTitlesGrowWithTheType()
    {
        qApp->setStyleSheet("QHeaderView::section { padding: 4px; }");
        for (const int size : { 17, 31, 22 }) {
            QFont font = m_list->font();
            font.setPixelSize(size);
            m_list->setFont(font);
            QCoreApplication::processEvents();
            QCOMPARE(m_list->header()->font().pixelSize(), size);
        }
        // Also those that were set before it is seen.
        ListView hidden;
        hidden.SetColumns({ "Word" });
        QFont font = hidden.font();
        font.setPixelSize(33);
        hidden.setFont(font);
        hidden.show();
        QCoreApplication::processEvents();
        QCOMPARE(hidden.header()->font().pixelSize(), 33);
        // Whatever a style makes of the header meanwhile.
        font.setPixelSize(20);
        hidden.header()->setFont(font);
        QCOMPARE(hidden.header()->font().pixelSize(), 33);
        qApp->setStyleSheet(QString());
    }

    void aTextThatIsCutOffIsToldWhole()
    {
        Fill({ QString(80, 'w') + " <b>", "cat", "two\nlines" });
        m_list->SetColumnTwips(1, 3000);
        const auto tipAt = [&](int row) {
            QToolTip::hideText();
            QHelpEvent event(QEvent::ToolTip, Centre(row), m_list->viewport()->mapToGlobal(Centre(row)));
            QCoreApplication::sendEvent(m_list->viewport(), &event);
            return QToolTip::isVisible() ? QToolTip::text() : QString();
        };
        QVERIFY(tipAt(0).contains(QString(80, 'w') + " &lt;b&gt;"));
        QVERIFY(tipAt(2).contains("lines"));
        QVERIFY(!tipAt(1).contains("cat"));
        QCOMPARE(m_list->model()->index(2, 0).data().toString(), QString("two lines"));
        QToolTip::hideText();
    }

    // The longest list that can be saved.
    void manyEntriesAreThereAtOnce()
    {
        QElapsedTimer time;
        time.start();
        for (int number = 0; number < 32767; ++number) {
            const auto item = m_list->Add(QStringLiteral("word %1").arg((number * 7919) % 32767));
            item->SetSubItem(1, QStringLiteral("sound %1").arg(number));
        }
        QCoreApplication::processEvents();
        m_list->grab();
        qInfo("loaded in %lld ms", time.elapsed());
        QVERIFY(time.elapsed() < kLoadMilliseconds);
        time.restart();
        constexpr int kSteps = 100;
        for (int step = 1; step <= kSteps; ++step) {
            m_list->verticalScrollBar()->setValue(m_list->verticalScrollBar()->maximum() / kSteps * step);
            m_list->grab();
        }
        qInfo("%.2f ms for a step of scrolling", double(time.elapsed()) / kSteps);
        QVERIFY(time.elapsed() < kSteps * kFrameMilliseconds);
        time.restart();
        m_list->sortByColumn(0, Qt::AscendingOrder);
        qInfo("sorted in %lld ms", time.elapsed());
        QCOMPARE(m_list->Item(32767)->SubItem(1), QString("sound 32766"));
        time.restart();
        m_list->Remove(m_list->SelectedItem()->Index());
        qInfo("removed in %lld ms", time.elapsed());
        QCOMPARE(m_list->Count(), 32766);
    }

private:
#if defined(__SANITIZE_ADDRESS__)
    static constexpr int kLoadMilliseconds = 5000;
    static constexpr int kFrameMilliseconds = 80;
#else
    static constexpr int kLoadMilliseconds = 1000;
    static constexpr int kFrameMilliseconds = 16;
#endif

    void Fill(const QStringList &words)
    {
        for (const QString &word : words)
            m_list->Add(word);
    }
    QStringList Seen() const
    {
        QStringList seen;
        for (int row = 0; row < m_list->model()->rowCount(); ++row)
            seen << m_list->model()->index(row, 0).data().toString();
        return seen;
    }
    QPoint Centre(int row) const
    {
        return m_list->visualRect(m_list->model()->index(row, 0))
            .intersected(m_list->viewport()->rect())
            .center();
    }
    void Click(int row)
    {
        QTest::mouseClick(m_list->viewport(), Qt::LeftButton, {}, Centre(row));
    }
    void ClickTitle(int column)
    {
        const QPoint place(m_list->header()->sectionViewportPosition(column) + 20, 8);
        QTest::mouseClick(m_list->header()->viewport(), Qt::LeftButton, {}, place);
    }
    // What the list tells while `work` runs, with what is selected then.
    QStringList Told(const std::function<void()> &work)
    {
        QStringList told;
        const QObject scope;
        connect(&*m_list, &ListView::Clicked, &scope,
                [&] { told << "click " + m_list->SelectedItem()->Text(); });
        connect(&*m_list, &ListView::DoubleClicked, &scope,
                [&] { told << "double " + m_list->SelectedItem()->Text(); });
        work();
        return told;
    }
    // The lines of the context menu; one named is chosen.
    QStringList Menu(const QString &choice = {})
    {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
        QCoreApplication::sendEvent(m_list->viewport(), &event);
        QStringList lines;
        for (auto *menu : m_list->findChildren<QMenu *>()) {
            for (QAction *action : menu->actions()) {
                lines << action->text();
                if (action->text() == choice)
                    action->trigger();
            }
            delete menu;
        }
        return lines;
    }
    std::optional<ListView> m_list;
};

QTEST_MAIN(TestListView)
#include "TestListView.moc"
