#include "authoring/frmEditQuiz.h"
#include "authoring/frmEditSpell.h"
#include "platform/forms/ListView.h"
#include "platform/forms/MultiLineBox.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"
#include "support/CoverAndUncover.h"
#include "support/Desk.h"
#include "support/ReportText.h"

#include <QLineEdit>
#include <QRandomGenerator>
#include <QTest>

using namespace tumblewick;
using platform::BoxAnswer;
using support::Desk;
using support::FakeBoxes;
using support::ReportText;

namespace {

// What the two screens that edit a list differ in.
struct Kind {
    QString list; // the control that shows it
    QStringList editBoxes;
    QStringList addBoxes;
    QString file;
    QStringList entries; // at first, their fields with bars between them
    std::function<void()> open;
    bool keepsWhatIsChosen; // when it is left
    QString notChosen;
    QString deleteQuestion; // with a hole for the entry
    // A line of the file; `isBehindRemoval` when one has just been deleted.
    std::function<QString(const QStringList &entry, bool isBehindRemoval)> line;
    std::function<QString(const QStringList &entry)> faults;
};

template <class Screen>
void Open(const QString &name)
{
    Screen::Shared().EditFileName = name;
    Screen::Shared().Show();
}

QString UnderscoreIn(const QString &text, const QString &what)
{
    return text.contains('_') ? what + " cannot contain an underscore. " : QString();
}

const Kind kSpelling{
    "List",
    { "txtESpell", "txtEPronounce" },
    { "txtASpell", "txtAPronounce" },
    "Lists/Pets",
    { "cat|", "knight|nite", "dog|" },
    [] { Open<frmEditSpell>("Pets"); },
    false,
    "You need to double click on a word from the list before you can edit it. ",
    "Are you sure you want to delete %1 from the list?",
    [](const QStringList &entry, bool isBehindRemoval) {
        return entry[1].isEmpty() && !isBehindRemoval ? entry[0] : entry[0] + '_' + entry[1];
    },
    [](const QStringList &entry) {
        return (entry[0].isEmpty() ? QString("Please enter the spelling for the new word. ")
                                   : UnderscoreIn(entry[0], "The spelling for the word")) +
               UnderscoreIn(entry[1], "The pronunciation for the word");
    },
};

const Kind kQuiz{
    "lvwList",
    { "txtEQuestion", "txtEAnsw_0", "txtEAnsw_1", "txtEAnsw_2", "txtEAnsw_3", "txtECorrect" },
    { "txtAQuestion", "txtAAnsw_0", "txtAAnsw_1", "txtAAnsw_2", "txtAAnsw_3", "txtACorrect" },
    "QList/Zoo",
    { "Legs?|4|6|8|10|3", "Wings?|2|4|6|8|1", "Same?|a|a|a|a|4" },
    [] { Open<frmEditQuiz>("Zoo"); },
    true,
    "You need to double click on a question from the list before you can edit it. ",
    "Are you sure you want to delete the question '%1' from the list?",
    [](const QStringList &entry, bool) { return entry.join('_') + '_'; },
    [](const QStringList &entry) {
        QString faults = entry[0].isEmpty() ? QString("Please enter a question. ")
                                            : UnderscoreIn(entry[0], "The question");
        for (int number = 1; number <= 4; ++number)
            faults += entry[number].isEmpty()
                          ? "Please enter an answer " + QString::number(number) + ". "
                          : UnderscoreIn(entry[number], "Answer " + QString::number(number));
        if (entry[5].isEmpty())
            return faults + "Please enter the number of the correct answer. ";
        return QStringList({ "1", "2", "3", "4" }).contains(entry[5])
                   ? faults
                   : faults + "The number of the correct answer must be 1,2,3 or 4. ";
    },
};

// What such a screen has to do, in the plainest words. It tells the boxes ahead which of them the same step
// of the screen will show.
struct Model {
    const Kind &kind;
    FakeBoxes &boxes;
    QList<QStringList> entries{};
    QByteArray file{};
    QStringList edit{};
    QStringList add{};
    bool isChosen = false;
    bool isEditDirty = false;

    QStringList Nothing() const { return QStringList(kind.editBoxes.size()); }
    void Rewrite(bool isBehindRemoval)
    {
        file.clear();
        for (const QStringList &entry : entries)
            file += (kind.line(entry, isBehindRemoval) + "\r\n").toLatin1();
    }
    void Click()
    {
        edit = Nothing();
        isChosen = false;
    }
    void DoubleClick(int selected)
    {
        edit = entries[selected - 1];
        isChosen = true;
        isEditDirty = false;
    }
    bool Save(int selected)
    {
        if (!isChosen)
            boxes.Expect(kind.notChosen);
        if (!isChosen || IsFaulty(edit))
            return false;
        entries[selected - 1] = edit;
        Rewrite(false);
        Click();
        return true;
    }
    bool Add()
    {
        Click();
        if (IsFaulty(add))
            return false;
        entries << add;
        file += (kind.line(add, false) + "\r\n").toLatin1();
        add = Nothing();
        return true;
    }
    void Delete(int selected)
    {
        entries.removeAt(selected - 1);
        Rewrite(true);
        Click();
    }
    bool MayLeave(int selected, BoxAnswer answer)
    {
        const bool isEditPending = isEditDirty && edit != Nothing();
        if (!isEditPending && add == Nothing())
            return true;
        boxes.Expect("Save Changes?", answer);
        if (answer != BoxAnswer::Yes)
            return answer == BoxAnswer::No;
        const bool isSaved = !isEditPending || Save(selected);
        const bool isAdded = add == Nothing() || Add();
        return isSaved && isAdded;
    }
    void ComeBack()
    {
        edit = add = Nothing();
        isChosen = isChosen && kind.keepsWhatIsChosen;
    }
    bool IsFaulty(const QStringList &entry) const
    {
        const QString faults = kind.faults(entry);
        if (!faults.isEmpty())
            boxes.Expect(faults);
        return !faults.isEmpty();
    }
};

} // namespace

// The screens that edit a list, used at random beside a model of them: list, boxes and file are the same
// behind each step.
class TestEditingModel : public QObject {
    Q_OBJECT

private slots:
    void theScreenDoesWhatTheModelDoes_data()
    {
        QTest::addColumn<bool>("isQuiz");
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 25; ++seed) {
            QTest::addRow("spelling, %u", seed) << false << seed;
            QTest::addRow("quiz, %u", seed) << true << seed;
        }
    }
    void theScreenDoesWhatTheModelDoes()
    {
        QFETCH(bool, isQuiz);
        QFETCH(quint32, seed);
        const Kind &kind = isQuiz ? kQuiz : kSpelling;
        m_random.seed(seed);
        m_desk.emplace();
        State().MenuShown = true;
        m_model.emplace(Model{ kind, m_desk->boxes });
        m_model->edit = m_model->add = m_model->Nothing();
        for (const QString &entry : kind.entries)
            m_model->entries << entry.split('|');
        m_model->Rewrite(false);
        m_desk->WriteFile(kind.file, m_model->file);
        OpenScreen();
        for (int step = 0; step < 200; ++step) {
            const QByteArray done = "step " + QByteArray::number(step) + ": " + Step().toUtf8();
            QVERIFY2(m_desk->boxes.AllAnswered(), done);
            QVERIFY2(m_desk->Content(kind.file) == m_model->file, done);
            QVERIFY2(Entries() == m_model->entries, done);
            QVERIFY2(Typed(kind.editBoxes) == m_model->edit, done);
            QVERIFY2(Typed(kind.addBoxes) == m_model->add, done);
        }
        m_desk.reset();
    }

private:
    void OpenScreen()
    {
        m_model->kind.open();
        m_desk->Settle();
    }
    platform::ListView &List() { return *m_desk->Find<platform::ListView>(m_model->kind.list); }
    int Selected() { return List().Count() == 0 ? 0 : List().SelectedItem()->Index(); }
    QList<QStringList> Entries()
    {
        QList<QStringList> entries;
        for (int index = 1; index <= List().Count(); ++index) {
            QStringList fields{ List().Item(index)->Text() };
            for (int number = 1; number < m_model->kind.editBoxes.size(); ++number)
                fields << List().Item(index)->SubItem(number);
            entries << fields;
        }
        return entries;
    }
    QStringList Typed(const QStringList &boxes)
    {
        QStringList texts;
        for (const QString &name : boxes) {
            auto *box = m_desk->Find<QWidget>(name);
            const auto *lines = qobject_cast<platform::MultiLineBox *>(box);
            texts << (lines ? lines->Text() : qobject_cast<QLineEdit *>(box)->text());
        }
        return texts;
    }
    void Type(bool isEdit, int box, const QString &text)
    {
        const QString &name = (isEdit ? m_model->kind.editBoxes : m_model->kind.addBoxes)[box];
        QString &typed = (isEdit ? m_model->edit : m_model->add)[box];
        if (typed == text)
            return;
        typed = text;
        m_model->isEditDirty |= isEdit;
        if (auto *lines = qobject_cast<platform::MultiLineBox *>(m_desk->Find<QWidget>(name)))
            lines->SetText(text);
        else
            m_desk->Type(name, text);
    }
    int Draw(int count) { return m_random.bounded(count); }
    QString DrawOf(const QStringList &texts) { return texts[Draw(int(texts.size()))]; }

    // Does something on both and tells what.
    QString Step()
    {
        Model &model = *m_model;
        platform::ListView &list = List();
        const int boxes = int(model.kind.editBoxes.size());
        switch (Draw(11)) {
        case 0:
        case 1: {
            const bool isEdit = Draw(2) == 0;
            const int box = Draw(boxes);
            const QString text = DrawOf({ "", "sun", "two words", " ", "a_b", "_", "1", "4", "5", "01" });
            Type(isEdit, box, text);
            return "type " + text + " into " + (isEdit ? model.kind.editBoxes : model.kind.addBoxes)[box];
        }
        case 2: {
            const bool isEdit = Draw(2) == 0;
            for (int box = 0; box < boxes; ++box)
                Type(isEdit, box, DrawOf({ "1", "2", "3", "4" }));
            return isEdit ? "type an edit" : "type an entry";
        }
        case 3:
        case 4:
        case 5: {
            QPoint place(30, 60);
            if (list.Count() > 0) {
                list.Select(1 + Draw(list.Count()));
                place = list.visualRect(list.currentIndex()).center();
            }
            model.Click();
            QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
            if (Draw(3) == 0)
                return "click";
            if (list.Count() > 0)
                model.DoubleClick(Selected());
            else
                model.boxes.Expect(ReportText(91));
            QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
            return "double click";
        }
        case 6:
            model.Save(Selected());
            m_desk->Press("cmdSave");
            return "save";
        case 7:
            model.Add();
            m_desk->Press("cmdAdd");
            return "add";
        case 8: {
            if (list.Count() == 0) {
                model.boxes.Expect(ReportText(91));
            } else {
                const BoxAnswer answer = Draw(2) == 0 ? BoxAnswer::Yes : BoxAnswer::No;
                model.boxes.Expect(model.kind.deleteQuestion.arg(list.SelectedItem()->Text()), answer);
                if (answer == BoxAnswer::Yes)
                    model.Delete(Selected());
            }
            m_desk->Press("cmdDelete");
            return "delete";
        }
        case 9:
            if (Draw(2) == 0) {
                CoverAndUncover(*m_desk);
                return "cover and uncover";
            }
            list.sortByColumn(Draw(boxes + 1) - 1, Draw(2) == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
            return "sort";
        default: {
            const BoxAnswer answer = std::array{ BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Cancel }[Draw(3)];
            const bool isLeft = model.MayLeave(Selected(), answer);
            m_desk->Press("cmdMenu");
            if (frmMenu1::Shared().IsActive() != isLeft)
                QTest::qFail(isLeft ? "it has not been left" : "it has been left", __FILE__, __LINE__);
            if (!isLeft)
                return "stay";
            model.ComeBack();
            OpenScreen();
            return "leave and come back";
        }
        }
    }

    QRandomGenerator m_random;
    std::optional<Desk> m_desk;
    std::optional<Model> m_model;
};

QTEST_MAIN(TestEditingModel)
#include "TestEditingModel.moc"
