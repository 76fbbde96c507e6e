// The window in which help is read.

#include "ChmWriter.h"
#include "platform/help/HelpBook.h"
#include "platform/help/HelpPage.h"
#include "platform/help/HelpWindow.h"
#include "support/ControlWalk.h"

#include <QAction>
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QScrollBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>
#include <QUrl>
#include <set>

#include <sys/inotify.h>
#include <unistd.h>

using namespace platform;

namespace {

QByteArray Page(const QByteArray &title, const QByteArray &text)
{
    return "<html><head><title>" + title + "</title></head><body><h1>" + title + "</h1>" + text +
           "</body></html>";
}

QByteArray Line(const QByteArray &title, const QByteArray &page)
{
    return "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"" + title +
           "\"><param name=\"Local\" value=\"" + page + "\"></OBJECT>";
}

QByteArray WidePicture()
{
    QImage picture(2000, 100, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    picture.save(&buffer, "PNG");
    return bytes;
}

const QByteArray kFar = QByteArray("<p>and so on</p>").repeated(200);

} // namespace

class TestHelpWindow : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        Write({
            { "Welcome.htm",
              Page("Welcome", "<p>A hint for parents. A <a href=\"My%20Lists%2C%20all.htm#far\">link"
                              "</a>, and a <a href=\"http://somewhere.example/\">way out</a>.</p>") },
            { "My Lists, all.htm",
              Page("Lists", "<p>Write a list. Hints cost nothing, a hint is a hint.</p>" + kFar +
                                "<h2><a name=\"far\"></a>Far away</h2>" + kFar) },
            { "Pictures.htm", Page("Pictures", "<p><img src=\"pictures/wide.png\"></p>" + kFar) },
            { "pictures/wide.png", WidePicture() },
            { "Test.hhc", "<UL>" + Line("Welcome", "Welcome.htm") + "<UL>" +
                              Line("Lists", "My Lists, all.htm") + Line("Far away", "My Lists, all.htm#far") +
                              "</UL>" + Line("Pictures", "Pictures.htm") + "</UL>" },
            { "Test.hhk",
              "<UL>" + Line("Hint", "Welcome.htm") + Line("Distance", "My Lists, all.htm#far") + "</UL>" },
        });
        m_window.emplace();
        m_window->ShowTopic(m_path, "Welcome.htm");
    }
    void cleanup() { m_window.reset(); }

    void theTopicIsShownUnderItsTitle()
    {
        QVERIFY(m_window->isVisible());
        QVERIFY(Text().startsWith("Welcome"));
        QCOMPARE(m_window->windowTitle(), QString("Welcome – Tumblewick Help"));
    }

    void theContentsOpenPagesAndFollowThem()
    {
        auto *contents = Find<QTreeWidget>("contents");
        QCOMPARE(contents->topLevelItemCount(), 2);
        QCOMPARE(contents->currentItem()->text(0), QString("Welcome"));
        contents->setCurrentItem(contents->topLevelItem(1));
        QCOMPARE(Opened(), QString("Pictures.htm"));
        m_window->ShowTopic(m_path, "My Lists, all.htm#far");
        QCOMPARE(contents->currentItem()->text(0), QString("Far away"));
        contents->setCurrentItem(contents->currentItem()->parent()->child(0));
        QCOMPARE(Opened(), QString("My Lists, all.htm"));
    }

    void linksLeadToTheirPlace()
    {
        Follow("My%20Lists%2C%20all.htm#far");
        QCOMPARE(Opened(), QString("My Lists, all.htm#far"));
        QTRY_VERIFY(PageShown()->verticalScrollBar()->value() > 500);
    }

    void linksOutOfTheHelpDoNothing()
    {
        for (const char *link : { "http://somewhere.example/", "file:///etc/hostname", "javascript:1" }) {
            Follow(link);
            QCOMPARE(Opened(), QString("Welcome.htm"));
        }
    }

    void backAndForward()
    {
        QVERIFY(!Action("back")->isEnabled() && !Action("forward")->isEnabled());
        Follow("My%20Lists%2C%20all.htm");
        Follow("Pictures.htm");
        Press("back");
        Press("back");
        QCOMPARE(Opened(), QString("Welcome.htm"));
        QVERIFY(!Action("back")->isEnabled());
        Press("forward");
        QCOMPARE(Opened(), QString("My Lists, all.htm"));
        QVERIFY(Action("forward")->isEnabled());
        Press("home");
        QCOMPARE(Opened(), QString("Welcome.htm"));
        QVERIFY(!Action("forward")->isEnabled());
    }

    void aFurtherTopicCanBeLeftByBack()
    {
        m_window->ShowTopic(m_path, "Pictures.htm");
        QVERIFY(Action("back")->isEnabled());
        Press("back");
        QCOMPARE(Opened(), QString("Welcome.htm"));
    }

    void aFurtherTopicFindsTheWindowAsItIsAtFirst()
    {
        Press("find");
        Find<QLineEdit>("searchWords")->setText("hint");
        QVERIFY(Find<QListWidget>("hits")->count() > 0);
        Find<QTabWidget>("shelves")->setCurrentIndex(2);
        m_window->showMinimized();
        m_window->ShowTopic(m_path, "Pictures.htm");
        QVERIFY(!m_window->isMinimized());
        QVERIFY(Find<QWidget>("findBar")->isHidden());
        QCOMPARE(Find<QTabWidget>("shelves")->currentIndex(), 0);
        QCOMPARE(Find<QLineEdit>("searchWords")->text(), QString());
        QCOMPARE(Find<QListWidget>("hits")->count(), 0);
    }

    void aClosedWindowForgetsTheWay()
    {
        Follow("Pictures.htm");
        m_window->close();
        m_window->ShowTopic(m_path, "My Lists, all.htm");
        QVERIFY(!Action("back")->isEnabled() && !Action("forward")->isEnabled());
    }

    void theIndexIsNarrowedByTyping()
    {
        auto *index = Find<QListWidget>("index");
        QCOMPARE(index->count(), 2);
        Find<QLineEdit>("indexWord")->setText("dist");
        QCOMPARE(index->count(), 1);
        QTest::keyClick(Find<QLineEdit>("indexWord"), Qt::Key_Return);
        QCOMPARE(Opened(), QString("My Lists, all.htm#far"));
    }

    void searchFindsTheBestPageFirst()
    {
        auto *hits = Find<QListWidget>("hits");
        Find<QLineEdit>("searchWords")->setText("HINT");
        QCOMPARE(hits->count(), 2);
        QVERIFY(hits->item(0)->text().startsWith("Lists\n"));
        QVERIFY(hits->item(0)->text().contains("Hints cost nothing"));
        QTest::keyClick(Find<QLineEdit>("searchWords"), Qt::Key_Return);
        QCOMPARE(Opened(), QString("My Lists, all.htm"));
        QCOMPARE(PageShown()->extraSelections().size(), 3);
    }

    void aHitShowsItsTitleInBoldAndAllOfItsText()
    {
        auto *hits = Find<QListWidget>("hits");
        Find<QLineEdit>("searchWords")->setText("hint");
        const auto heightFor = [hits](const QString &text) {
            hits->item(0)->setText(text);
            hits->doItemsLayout();
            return hits->visualItemRect(hits->item(0)).height();
        };
        const auto inkOf = [&](const QString &text) {
            heightFor(text);
            const QImage picture = hits->viewport()->grab(hits->visualItemRect(hits->item(0))).toImage();
            int sum = 0;
            for (int y = 0; y < picture.height(); ++y)
                for (int x = 0; x < picture.width(); ++x)
                    sum += 255 - qGray(picture.pixel(x, y));
            return sum;
        };
        const int nothing = inkOf("\n ");
        const int title = inkOf("wood mouse\n ") - nothing;
        const int rest = inkOf("\nwood mouse") - nothing;
        QVERIFY(rest > 0);
        QVERIFY2(title > rest * 1.1, qPrintable(QStringLiteral("%1 and %2").arg(title).arg(rest)));

        const int line = hits->fontMetrics().lineSpacing();
        const QString words = QStringLiteral("many words ").repeated(40);
        const int more = heightFor("Title\n" + words) - heightFor("Title\n.") + line;
        const int space = more / line * hits->viewport()->width();
        QVERIFY2(space > hits->fontMetrics().horizontalAdvance(words), qPrintable(QString::number(more)));
    }

    // A page is found by the beginnings of its words, and turned to where they are.
    void aHitTurnsToTheBeginningOfAWord()
    {
        Write({ { "Words.htm", Page("Words", "<p>Sprint. A printer prints.</p>") } });
        m_window->ShowTopic(m_path, "Words.htm");
        Find<QLineEdit>("searchWords")->setText("Print");
        QTest::keyClick(Find<QLineEdit>("searchWords"), Qt::Key_Return);
        QStringList marked;
        for (const QTextEdit::ExtraSelection &mark : PageShown()->extraSelections())
            marked << QString::number(mark.cursor.selectionStart() - Text().indexOf("Sprint"));
        QCOMPARE(marked.join(' '), QString("10 18"));
        QCOMPARE(PageShown()->textCursor().position(), Text().indexOf("printer"));
    }

    void tabComesIntoAListAndOpensNothing_data()
    {
        QTest::addColumn<int>("shelf");
        QTest::addColumn<QString>("list");
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("words");
        QTest::newRow("index") << 1 << "index"
                               << "indexWord"
                               << "";
        QTest::newRow("search") << 2 << "hits"
                                << "searchWords"
                                << "hint";
    }
    void tabComesIntoAListAndOpensNothing()
    {
        QFETCH(int, shelf);
        QFETCH(QString, list);
        QFETCH(QString, box);
        QFETCH(QString, words);
        Find<QTabWidget>("shelves")->setCurrentIndex(shelf);
        auto *line = Find<QLineEdit>(qPrintable(box));
        auto *entries = Find<QListWidget>(qPrintable(list));
        for (const Qt::Key key : { Qt::Key_Return, Qt::Key_Space, Qt::Key_Down }) {
            m_window->ShowTopic(m_path, "Pictures.htm");
            Find<QTabWidget>("shelves")->setCurrentIndex(shelf);
            line->setFocus();
            line->setText("x");
            line->setText(words);
            QCOMPARE(entries->count(), 2);
            QTest::keyClick(line, Qt::Key_Tab);
            QTRY_VERIFY(entries->hasFocus());
            QCOMPARE(Opened(), QString("Pictures.htm"));
            QTest::keyClick(entries, key);
            QCOMPARE(Opened(), entries->item(0)->data(Qt::UserRole).toString());
        }
        // From there the arrow keys open as they go.
        QTest::keyClick(entries, Qt::Key_Down);
        QCOMPARE(Opened(), entries->item(1)->data(Qt::UserRole).toString());
    }

    void searchWantsEveryWord_data()
    {
        QTest::addColumn<QString>("words");
        QTest::addColumn<int>("pages");
        QTest::newRow("nothing") << "" << 0;
        QTest::newRow("signs alone") << "?! ()" << 0;
        QTest::newRow("a title") << "pictures" << 1;
        QTest::newRow("two words") << "list hint" << 1;
        QTest::newRow("words of different pages") << "parents list" << 0;
        QTest::newRow("the end of a word") << "ist" << 0;
        QTest::newRow("the beginning of a word") << "par" << 1;
        QTest::newRow("a pattern's signs") << "hint.*" << 2;
    }
    void searchWantsEveryWord()
    {
        QFETCH(QString, words);
        QFETCH(int, pages);
        Find<QLineEdit>("searchWords")->setText(words);
        QCOMPARE(Find<QListWidget>("hits")->count(), pages);
        if (!words.isEmpty() && pages == 0)
            QCOMPARE(Find<QLabel>("searchResult")->text(), QString("No page has this. Try another word."));
    }

    void findGoesRoundThePage()
    {
        m_window->ShowTopic(m_path, "My Lists, all.htm");
        Press("find");
        auto *text = Find<QLineEdit>("findText");
        text->setText("hint");
        QCOMPARE(Find<QLabel>("findResult")->text(), QString("3 places"));
        QList<int> places;
        for (int time = 0; time < 4; ++time) {
            QTest::keyClick(text, Qt::Key_Return);
            places << PageShown()->textCursor().selectionStart();
        }
        QVERIFY(places[0] < places[1] && places[1] < places[2]);
        QCOMPARE(places[3], places[0]);
        Press("previous");
        QCOMPARE(PageShown()->textCursor().selectionStart(), places[2]);
        text->setText("unheard of");
        QCOMPARE(Find<QLabel>("findResult")->text(), QString("Not on this page"));
        Press("next");
    }

    void everyControlIsReachedByTabAndToldOf()
    {
        auto *shelves = Find<QTabWidget>("shelves");
        Press("find");
        Find<QLineEdit>("searchWords")->setText("hint");
        for (int shelf = 0; shelf < shelves->count(); ++shelf) {
            shelves->setCurrentIndex(shelf);
            QCOMPARE(support::FaultsForKeyboardAndReader(*m_window).join('\n'), QString());
            QVERIFY(support::TabRound(*m_window).size() >= 10);
        }
    }

    void escapeClosesTheFindBoxThenTheWindow()
    {
        Press("find");
        QVERIFY(!Find<QWidget>("findBar")->isHidden());
        Find<QLineEdit>("findText")->setText("hint");
        Press("leave");
        QVERIFY(Find<QWidget>("findBar")->isHidden());
        QVERIFY(PageShown()->extraSelections().isEmpty());
        Press("leave");
        QVERIFY(!m_window->isVisible());
    }

    void lettersGrowAndShrinkWithinBounds()
    {
        const auto size = [this] { return PageShown()->document()->defaultFont().pixelSize(); };
        const int usual = size();
        Press("larger");
        QVERIFY(size() > usual);
        Press("usual");
        QCOMPARE(size(), usual);
        for (int time = 0; time < 50; ++time)
            Press("smaller");
        QVERIFY(size() < usual && size() >= 10);
        QVERIFY(!Action("smaller")->isEnabled());
        for (int time = 0; time < 50; ++time)
            Press("larger");
        QVERIFY(!Action("larger")->isEnabled());
        m_window->close();
        const int large = size();
        m_window->ShowTopic(m_path, "Pictures.htm");
        QCOMPARE(size(), large);
    }

    void theWheelWithControlChangesTheLetters()
    {
        const auto turn = [this](int by, Qt::KeyboardModifiers keys) {
            QWidget *view = PageShown()->viewport();
            const QPointF middle = QRectF(view->rect()).center();
            QWheelEvent event(middle, view->mapToGlobal(middle), {}, QPoint(0, by), Qt::NoButton, keys,
                              Qt::NoScrollPhase, false);
            QApplication::sendEvent(view, &event);
        };
        QCOMPARE(PageShown()->Zoom(), 0);
        turn(120, Qt::ControlModifier);
        QCOMPARE(PageShown()->Zoom(), 1);
        turn(-120, Qt::ControlModifier);
        turn(-120, Qt::ControlModifier);
        QCOMPARE(PageShown()->Zoom(), -1);
        turn(0, Qt::ControlModifier); // sideways
        QCOMPARE(PageShown()->Zoom(), -1);
        m_window->ShowTopic(m_path, "My Lists, all.htm");
        PageShown()->verticalScrollBar()->setValue(0);
        turn(-120, Qt::NoModifier);
        QCOMPARE(PageShown()->Zoom(), -1);
        QVERIFY(PageShown()->verticalScrollBar()->value() > 0);
    }

    void keysLeadBetweenThePageAndWhatIsBesideIt()
    {
        auto *shelves = Find<QTabWidget>("shelves");
        m_window->activateWindow();
        QTRY_VERIFY(m_window->isActiveWindow());
        std::set<QWidget *> met;
        for (int shelf = 0; shelf < shelves->count(); ++shelf) {
            shelves->setCurrentIndex(shelf);
            PageShown()->setFocus();
            Press("changePane");
            QVERIFY(!PageShown()->hasFocus());
            QVERIFY(shelves->currentWidget() == m_window->focusWidget() ||
                    shelves->currentWidget()->isAncestorOf(m_window->focusWidget()));
            met.insert(m_window->focusWidget());
            Press("changePane");
            QVERIFY(PageShown()->hasFocus());
        }
        QCOMPARE(int(met.size()), shelves->count());
        shelves->setCurrentIndex(0);
        Find<QLineEdit>("searchWords")->setText("hint");
        Press("goToSearch");
        QVERIFY(Find<QLineEdit>("searchWords")->hasFocus());
        QCOMPARE(Find<QLineEdit>("searchWords")->selectedText(), QString("hint"));
    }

    void lookingOnOpensTheBoxThatWasClosed()
    {
        Press("find");
        Find<QLineEdit>("findText")->setText("hint");
        Press("done");
        QVERIFY(Find<QWidget>("findBar")->isHidden());
        Press("next");
        QVERIFY(!Find<QWidget>("findBar")->isHidden());
        QCOMPARE(PageShown()->textCursor().selectedText().toLower(), QString("hint"));
    }

    void printingIsAskedForBesideTheGame()
    {
        Press("print");
        auto *dialog = m_window->findChild<QPrintDialog *>();
        QVERIFY(dialog && dialog->isVisible());
        QCOMPARE(dialog->windowModality(), Qt::WindowModal);
        QCOMPARE(dialog->printer()->docName(), QString("Welcome"));
        QPrinter paper;
        paper.setOutputFormat(QPrinter::PdfFormat);
        paper.setOutputFileName(m_folder.filePath("asked.pdf"));
        emit dialog->accepted(&paper);
        QFile file(m_folder.filePath("asked.pdf"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().startsWith("%PDF"));
        m_window->close();
        QVERIFY(!dialog->isVisible());
        // It is asked anew for another page.
        m_window->ShowTopic(m_path, "My Lists, all.htm");
        Press("print");
        QVERIFY(dialog->isVisible());
        QVERIFY(dialog->printer()->docName() != QString("Welcome"));
    }

    void picturesNeverMakeThePageWider()
    {
        m_window->ShowTopic(m_path, "Pictures.htm");
        for (const int width : { 900, 640, 1100 }) {
            m_window->resize(width, 600);
            QTRY_COMPARE(PageShown()->horizontalScrollBar()->maximum(), 0);
            QVERIFY(PageShown()->document()->size().height() > 60);
        }
    }

    void thePageIsPrinted()
    {
        m_window->ShowTopic(m_path, "My Lists, all.htm");
        const QString path = m_folder.filePath("page.pdf");
        QPdfWriter paper(path);
        PageShown()->PrintTo(paper);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.size() > 1000);
        QVERIFY(file.readAll().startsWith("%PDF"));
    }

    void whatIsMissingOrDamagedIsTold_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("topic");
        QTest::addColumn<QString>("heading");
        QTest::newRow("no such page") << "Test.chm"
                                      << "No such page.htm"
                                      << "This page is missing";
        QTest::newRow("no such file") << "None.chm"
                                      << "Welcome.htm"
                                      << "The help is missing";
        QTest::newRow("a letter") << "Letter.chm"
                                  << "Welcome.htm"
                                  << "The help is damaged";
        QTest::newRow("a folder") << "Folder.chm"
                                  << "Welcome.htm"
                                  << "The help cannot be read";
        QTest::newRow("half a file") << "Half.chm"
                                     << "Welcome.htm"
                                     << "The help is damaged";
    }
    void whatIsMissingOrDamagedIsTold()
    {
        QFETCH(QString, file);
        QFETCH(QString, topic);
        QFETCH(QString, heading);
        Save("Letter.chm", "Dear Sir or Madam");
        QFile whole(m_path);
        QVERIFY(whole.open(QIODevice::ReadOnly));
        Save("Half.chm", whole.read(whole.size() / 2));
        QDir(m_folder.path()).mkdir("Folder.chm");
        m_window->ShowTopic(m_folder.filePath(file), topic);
        QVERIFY2(Text().startsWith(heading), qPrintable(Text()));
        for (const char *action : { "back", "home", "find", "larger", "next" })
            Press(action);
        Find<QLineEdit>("searchWords")->setText("hint");
        m_window->ShowTopic(m_path, "Welcome.htm");
        QVERIFY(Text().startsWith("Welcome"));
    }

    void aPageThatWasMissingIsReadAgain()
    {
        m_window->ShowTopic(m_folder.filePath("Later.chm"), "Welcome.htm");
        QVERIFY(Text().startsWith("The help is missing"));
        QVERIFY(QFile::copy(m_path, m_folder.filePath("Later.chm")));
        m_window->ShowTopic(m_folder.filePath("Later.chm"), "Welcome.htm");
        QVERIFY(Text().startsWith("Welcome"));
        QFile::remove(m_folder.filePath("Later.chm"));
    }

    // Neither by its place on the disk nor because it lies where the game was started.
    void nothingIsTakenFromTheDisk()
    {
        const QString sheet = Save("Beside.css", "p { color: red }");
        const QString picture = Save("Wide.png", WidePicture());
        const QByteArray place = QUrl::fromLocalFile(picture).toEncoded();
        Write({ { "Page.htm", "<html><head><title>Page</title><link rel=\"stylesheet\" type=\"text/css\" "
                              "href=\"Beside.css\">"
                              "</head><body><p>A hint.</p><img src=\"" +
                                  place + "\"><img src=\"Wide.png\"></body></html>" } });
        const int watch = inotify_init1(IN_NONBLOCK);
        for (const QString &path : { sheet, picture })
            QVERIFY(inotify_add_watch(watch, QFile::encodeName(path).constData(), IN_OPEN) >= 0);
        const QString before = QDir::currentPath();
        QDir::setCurrent(m_folder.path());
        m_window->ShowTopic(m_path, "Page.htm");
        Find<QLineEdit>("searchWords")->setText("hint");
        QDir::setCurrent(before);
        char opened[1000];
        QVERIFY(read(watch, opened, sizeof opened) < 0);
        close(watch);
        QCOMPARE(Find<QListWidget>("hits")->count(), 1);
        QCOMPARE(PageShown()->horizontalScrollBar()->maximum(), 0);
    }

    void signsInANameAreNoHtml()
    {
        m_window->ShowTopic(m_path, "<b>&x</b>.htm");
        QVERIFY2(Text().contains("<b>&x</b>.htm"), qPrintable(Text()));
    }

    void everythingThatCanBeWorkedHasAName()
    {
        for (QWidget *widget : m_window->findChildren<QWidget *>())
            if (widget->focusPolicy() & Qt::TabFocus && !widget->objectName().startsWith("qt_"))
                QVERIFY2(!widget->accessibleName().isEmpty() || qobject_cast<QTabBar *>(widget),
                         qPrintable(widget->objectName() + widget->metaObject()->className()));
    }

private:
    void Write(const std::map<QString, QByteArray> &files)
    {
        m_path = Save("Test.chm", WriteChm({ "Test", "Welcome.htm", "Test.hhc", "Test.hhk", "Test" }, files));
    }
    QString Save(const QString &name, const QByteArray &bytes)
    {
        QFile file(m_folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("a file cannot be written");
        return file.fileName();
    }
    template <class Type>
    Type *Find(const char *name) const
    {
        auto *found = m_window->findChild<Type *>(name);
        if (!found)
            qFatal("there is no %s", name);
        return found;
    }
    HelpPage *PageShown() const { return Find<HelpPage>("page"); }
    QAction *Action(const char *name) const { return Find<QAction>(name); }
    void Press(const char *name) { Action(name)->trigger(); }
    void Follow(const char *link) { PageShown()->setSource(QUrl(link)); }
    QString Opened() const { return PageShown()->Opened(); }
    QString Text() const { return PageShown()->toPlainText(); }

    QTemporaryDir m_folder;
    QString m_path;
    std::optional<HelpWindow> m_window;
};

QTEST_MAIN(TestHelpWindow)
#include "TestHelpWindow.moc"
