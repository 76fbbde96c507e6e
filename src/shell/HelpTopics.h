#pragma once

#include <QString>

namespace tumblewick {

inline const QString kIntroductionTopic = QStringLiteral("Introduction.htm");
inline const QString kListsTopic = QStringLiteral("Adding, Editing and Deleting Lists.htm");
inline const QString kNewSpellingListTopic = QStringLiteral("Add a New Spelling List.htm");
inline const QString kEditSpellingListTopic = QStringLiteral("Edit a Spelling List.htm");
inline const QString kPronunciationTopic = QStringLiteral("Tips on Pronunciation.htm");
inline const QString kNewQuizTopic = QStringLiteral("Add a New Quiz.htm");
inline const QString kEditQuizTopic = QStringLiteral("Edit a Quiz.htm");
inline const QString kTransferTopic = QStringLiteral("Exporting and Importing Lists.htm");
inline const QString kSettingsTopic = QStringLiteral("Settings1.htm");
inline const QString kPlayingTopic = QStringLiteral("Playing the Game.htm");

// Opens a topic of the help file beside the program.
void ShowHelpTopic(const QString &topic);

// Closes all help, whoever opened it; so the unload of a screen does.
void CloseHelp();

} // namespace tumblewick
