#include "authoring/SpellDesk.h"
#include "authoring/SpellingEntry.h"
#include "authoring/frmEditSpell.h"
#include "shell/SharedState.h"
#include "support/CoverAndUncover.h"
#include "support/ReportText.h"

#include <QRandomGenerator>

#include <vector>

using namespace tumblewick;
using platform::BoxAnswer;
using support::ReportText;
using support::SpellDesk;

namespace {

const QString kNotChosen = "You need to double click on a word from the list before you can edit it. ";

// What the screen that edits a spelling list has to do, in the plainest words. It tells the boxes ahead that
// the same step of the screen will show.
struct Model {
    std::vector<SpellingLine> words;
    QByteArray file;
    SpellingLine edit;
    SpellingLine add;
    bool isChosen = false;
    bool isEditDirty = false;

    void Click()
    {
        edit = {};
        isChosen = false;
    }
    void DoubleClick(int selected)
    {
        edit = words[std::size_t(selected - 1)];
        isChosen = true;
        isEditDirty = false;
    }
    bool Save(int selected, support::FakeBoxes &boxes)
    {
        if (!isChosen) {
            boxes.Expect(kNotChosen);
            return false;
        }
        if (IsFaulty(edit, boxes))
            return false;
        words[std::size_t(selected - 1)] = edit;
        file.clear();
        for (const SpellingLine &word : words)
            file += Line(word, false);
        Click();
        return true;
    }
    bool Add(support::FakeBoxes &boxes)
    {
        Click();
        if (IsFaulty(add, boxes))
            return false;
        words.push_back(add);
        file += Line(add, false);
        add = {};
        return true;
    }
    void Delete(int selected)
    {
        words.erase(words.begin() + selected - 1);
        file.clear();
        for (const SpellingLine &word : words)
            file += Line(word, true);
        Click();
    }
    bool MayLeave(int selected, BoxAnswer answer, support::FakeBoxes &boxes)
    {
        const bool isEditPending = isEditDirty && IsFilled(edit);
        if (!isEditPending && !IsFilled(add))
            return true;
        boxes.Expect("Save Changes?", answer);
        if (answer != BoxAnswer::Yes)
            return answer == BoxAnswer::No;
        const bool isSaved = !isEditPending || Save(selected, boxes);
        const bool isAdded = !IsFilled(add) || Add(boxes);
        return isSaved && isAdded;
    }

private:
    static bool IsFilled(const SpellingLine &entry) { return !(entry.word + entry.pronunciation).isEmpty(); }
    static bool IsFaulty(const SpellingLine &entry, support::FakeBoxes &boxes)
    {
        QString faults;
        if (entry.word.isEmpty())
            faults += "Please enter the spelling for the new word. ";
        if (entry.word.contains('_'))
            faults += support::kWordUnderscored;
        if (entry.pronunciation.contains('_'))
            faults += support::kSoundUnderscored;
        if (!faults.isEmpty())
            boxes.Expect(faults);
        return !faults.isEmpty();
    }
    static QByteArray Line(const SpellingLine &word, bool isAlwaysUnderscored)
    {
        const bool isAlone = word.pronunciation.isEmpty() && !isAlwaysUnderscored;
        return (isAlone ? word.word : word.word + '_' + word.pronunciation).toLatin1() + "\r\n";
    }
};

} // namespace

// The screen that edits a spelling list, used at random beside a model of it: list, boxes and file are the
// same behind each step.
class TestSpellingModel : public QObject {
    Q_OBJECT

private slots:
    void theScreenDoesWhatTheModelDoes_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 30; ++seed)
            QTest::addRow("%u", seed) << seed;
    }
    void theScreenDoesWhatTheModelDoes()
    {
        QFETCH(quint32, seed);
        m_random.seed(seed);
        m_desk.emplace("List");
        State().MenuShown = true;
        m_model = {};
        m_model.words = { { "cat", "" }, { "knight", "nite" }, { "dog", "" } };
        m_model.file = "cat\r\nknight_nite\r\ndog\r\n";
        m_desk->WriteFile("Lists/Pets", m_model.file);
        Open();
        for (int step = 0; step < 200; ++step) {
            const QByteArray done = "step " + QByteArray::number(step) + ": " + Step();
            QVERIFY2(m_desk->boxes.AllAnswered(), done);
            QVERIFY2(m_desk->Content("Lists/Pets") == m_model.file, done);
            QStringList words;
            for (const SpellingLine &word : m_model.words)
                words << word.word + '|' + word.pronunciation;
            QVERIFY2(m_desk->Words() == words, done);
            QVERIFY2(m_desk->Typed(kBoxes) == QStringList({ m_model.edit.word, m_model.edit.pronunciation,
                                                            m_model.add.word, m_model.add.pronunciation }),
                     done);
        }
        m_desk.reset();
    }

private:
    void Open()
    {
        frmEditSpell::Shared().EditFileName = "Pets";
        frmEditSpell::Shared().Show();
        m_desk->Settle();
    }
    int Selected()
    {
        const platform::ListItemReference item = m_desk->List()->SelectedItem();
        return item.IsNothing() ? 0 : item->Index();
    }
    int Draw(int count) { return m_random.bounded(count); }

    // Does something on both and tells what.
    QByteArray Step()
    {
        auto &list = *m_desk->List();
        switch (Draw(10)) {
        case 0:
        case 1:
        case 2: {
            const QString text = QStringList({ "", "sun", "two words", " ", "a_b", "_" })[Draw(6)];
            const int box = Draw(4);
            QString *const typed[] = { &m_model.edit.word, &m_model.edit.pronunciation, &m_model.add.word,
                                       &m_model.add.pronunciation };
            m_model.isEditDirty |= box < 2 && *typed[box] != text;
            *typed[box] = text;
            m_desk->Type(kBoxes[box], text);
            return "type " + text.toUtf8() + " into " + kBoxes[box].toUtf8();
        }
        case 3:
        case 4: {
            const bool isDouble = Draw(3) != 0;
            QPoint place(30, 60);
            if (list.Count() > 0) {
                list.Select(1 + Draw(list.Count()));
                place = list.visualRect(list.currentIndex()).center();
            }
            m_model.Click();
            QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
            if (!isDouble)
                return "click";
            if (list.Count() > 0)
                m_model.DoubleClick(Selected());
            else
                m_desk->boxes.Expect(ReportText(91));
            QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
            return "double click";
        }
        case 5:
            m_model.Save(Selected(), m_desk->boxes);
            m_desk->Press("cmdSave");
            return "save";
        case 6:
            m_model.Add(m_desk->boxes);
            m_desk->Press("cmdAdd");
            return "add";
        case 7: {
            if (list.Count() == 0) {
                m_desk->boxes.Expect(ReportText(91));
            } else {
                const BoxAnswer answer = Draw(2) == 0 ? BoxAnswer::Yes : BoxAnswer::No;
                m_desk->boxes.Expect(SpellDesk::DeleteQuestion(list.SelectedItem()->Text()), answer);
                if (answer == BoxAnswer::Yes)
                    m_model.Delete(Selected());
            }
            m_desk->Press("cmdDelete");
            return "delete";
        }
        case 8:
            if (Draw(2) == 0) {
                CoverAndUncover(*m_desk);
                return "cover and uncover";
            }
            list.sortByColumn(Draw(3) - 1, Draw(2) == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
            return "sort";
        default: {
            const BoxAnswer answer = std::array{ BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Cancel }[Draw(3)];
            const bool isLeft = m_model.MayLeave(Selected(), answer, m_desk->boxes);
            m_desk->Press("cmdMenu");
            if (!isLeft)
                return "stay";
            m_model.Click();
            m_model.isEditDirty = false;
            m_model.add = {};
            Open();
            return "leave and come back";
        }
        }
    }

    inline static const QStringList kBoxes{ "txtESpell", "txtEPronounce", "txtASpell", "txtAPronounce" };
    QRandomGenerator m_random;
    Model m_model;
    std::optional<SpellDesk> m_desk;
};

QTEST_MAIN(TestSpellingModel)
#include "TestSpellingModel.moc"
