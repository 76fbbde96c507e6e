#pragma once

#include <QString>

namespace tumblewick {

inline const QString kIntroductionTopic = QStringLiteral("Introduction.htm");
inline const QString kListsTopic = QStringLiteral("Adding, Editing and Deleting Lists.htm");
inline const QString kSettingsTopic = QStringLiteral("Settings1.htm");
inline const QString kPlayingTopic = QStringLiteral("Playing the Game.htm");

// Opens a topic of the help file beside the program.
void ShowHelpTopic(const QString &topic);

// What the unload of a screen does.
void CloseHelp();

} // namespace tumblewick
