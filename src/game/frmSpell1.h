#pragma once

#include "game/QuestionList.h"
#include "game/Scoreboard.h"
#include "game/Turns.h"
#include "lists/QuizLine.h"
#include "platform/agent/Agent.h"
#include "platform/forms/ResizedScreen.h"
#include "platform/forms/Timer.h"
#include "shell/SharedState.h"
#include "stage/Endings.h"

#include <functional>
#include <memory>
#include <span>

namespace Ui {
class frmSpell1;
}
namespace platform {
class MediaPlayer;
}

namespace tumblewick {

// The game: one screen for both kinds. It drives the turns by the rules that stand beside it and says what
// the characters do. Its instance lives for the whole run, and so do its members.
class frmSpell1 : public platform::ResizedScreen<frmSpell1> {
public:
    frmSpell1();
    ~frmSpell1() override;

    // The screen's own control; while loaded.
    const platform::AgentControlReference &Agent1() const { return m_agent1; }

private:
    void OnLoad(QWidget &window) override;
    void OnActivate() override { StartGame(); }
    void OnUnload() override;

    // StartGame.cpp: from the first appearance to the first question.
    void StartGame();
    void Do(const std::function<void()> &statement);
    [[nodiscard]] bool OpenGame();
    void MoveToPlace(CharacterIndex who);
    [[nodiscard]] bool WaitWithSoundCheck();
    void RefuseTooManyPlayers();
    void StopCharacters();
    void BeginAsking();

    // TurnCycle.cpp: asking, passing, repeating, leaving.
    void AskSpellingQuestion();
    void AskQuizQuestion();
    void NextTurn();
    void CountAsAsked();
    void EnableAnswering(bool enabled);
    void WaitAndRevealAnswers();
    QString SplitSpellingRecord();
    void ParseQuizRecord();
    void SpellOutAnswer(const QString &word);
    void cmdPass_Click();
    void cmdReplay_Click();
    void cmdHint_Click();
    void cmdNew_Click();
    void cmdAgain_Click();
    void cmdExit_Click();
    void Timer1_Timer();

    // EndOfList.cpp: the performance at the end of a list.
    void EndList();
    void Perform(std::span<const EndingStep> steps);
    platform::CharacterReference Performer(const EndingStep &step) const;
    void FinishList();
    void PlayFireworks();
    void MoveToPerch();
    void ShowButtons(bool shown);

    // AnswerJudging.cpp: from the answer to the next question.
    void cmdGo_Click();
    void JudgeSpelling();
    void JudgeQuiz();
    int SelectedAnswer() const;
    int CheerAndPraise();
    void ReadOutScores();
    void ShowScores();

    void Agent1_Command(const platform::UserInput &input);
    void txtAnswer_Change();

    bool IsSpelling() const;
    bool IsQuiz() const;
    GameKind Kind() const;
    QString PlayerName() const;
    int PlayerAtRank(int rank) const;             // counted from 0, the best first
    platform::CharacterReference Speaker() const; // who asks and answers this turn

    QuestionList Questions;
    Turns m_turns;
    platform::Integer16 CurrentQuestion;
    platform::Integer16 HintLetters; // letters given away for this question
    int RequestEvents = 0;           // requests that have ended since the last answer
    QuizLine m_quiz;                 // the quiz question in play
    QString CorrectWord;
    platform::Integer16 EndingPick;   // the ending that was drawn, 1 to 6
    platform::Integer16 EndingNumber; // the one that FinishList takes it for; it lives from game to game
    platform::Integer16 StageY;       // the line from which the characters' places are counted
    platform::RequestReference StageRequest;
    platform::RequestReference StageRequest2;
    platform::RequestReference StageRequest3;
    bool GameAbandoned = false; // no first question is asked
    platform::Integer16 LastPraise;
    RankOrder m_rankOrder; // built only for more than one player

    std::unique_ptr<Ui::frmSpell1> m_ui; // valid while loaded
    std::unique_ptr<platform::Timer> Timer1;
    std::unique_ptr<platform::MediaPlayer> MediaPlayer1;
    platform::AgentControlReference m_agent1;
};

} // namespace tumblewick
