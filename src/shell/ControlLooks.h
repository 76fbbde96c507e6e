#pragma once

class QLabel;
class QListView;
class QPushButton;
class QTextEdit;

namespace tumblewick {

// Looks of single controls that a style sheet cannot give. Whatever is added belongs to the control.

// Shows the answers of a question one below the other. They share the height of the list, long ones wrap in
// full, and the badges grow with the type and keep their colours when an answer is selected.
void ShareHeightAmongAnswers(QListView &list);

// Lets the text of the score panel sink to its foot, as far as there is room: the genie's mist hangs over the
// top of the panel.
void SinkText(QTextEdit &panel);

// Keeps the picture of a button as large against the button as both are now.
void ScalePicture(QPushButton &button);

// Letters of light: the text from pale to deep gold, with a dark edge and a shadow on the boards.
void LightLetters(QLabel &label);

} // namespace tumblewick
