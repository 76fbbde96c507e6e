#pragma once

#include "game/frmSpell1.h"
#include "shell/SharedState.h"
#include "stage/Endings.h"
#include "support/Desk.h"

#include <QListWidget>

#include <algorithm>
#include <chrono>

namespace tumblewick {

// A desk on which a game comes to its end.
class EndingDesk : public support::Desk {
public:
    // A game in which the last question has been asked.
    void Begin(GameKind kind, const QStringList &players)
    {
        m_kind = kind;
        const qsizetype count = players.size() == 1 ? 2 : players.size();
        if (kind == GameKind::Spelling)
            BeginSpelling(players, QStringList(count, "cat"));
        else
            BeginQuiz(players, QStringList(count, "Q_a_b_c_d_2_"));
        GoToLastQuestion();
    }
    void GoToLastQuestion()
    {
        const int players = State().NumPlayers;
        for (int turn = 1; turn < std::max(2, players); ++turn)
            GiveUp();
        Rest();
    }
    // Gives the players these scores: right answers and questions.
    void Score(const QList<QStringList> &scores)
    {
        for (int player = 0; player < scores.size(); ++player) {
            State().Players.SetText(player, Players::kCorrect, scores[player][0]);
            State().Players.SetText(player, Players::kAsked, scores[player][1]);
        }
    }
    // Gives up the last question, which draws that ending. The transcript begins with the performance.
    void End(int pick)
    {
        chance.onRandomize = [this] { transcript.Clear(); };
        chance.QueueDraw(pick, kEndingCount, 1);
        GiveUp();
        chance.onRandomize = {};
    }
    // Adds no point: a pass in a spelling game, a wrong answer in a quiz.
    void GiveUp()
    {
        if (m_kind == GameKind::Spelling)
            return Press("cmdPass");
        Find<QListWidget>("lvwAnswer")->setCurrentRow(3);
        Press("cmdGo");
    }

    // Calls `work` from the event loop when a line that begins so has been asked, while somebody waits.
    void When(const QString &line, std::function<void()> work)
    {
        After(std::chrono::milliseconds(20), [this, line, work] {
            const QStringList asked = transcript.Asked();
            if (std::any_of(asked.begin(), asked.end(),
                            [&line](const QString &each) { return each.startsWith(line); }))
                work();
            else
                When(line, work);
        });
    }

private:
    GameKind m_kind = GameKind::Spelling;
};

} // namespace tumblewick
