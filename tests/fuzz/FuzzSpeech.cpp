// The tags in what a character is to say.

#include "Fuzz.h"

#include "platform/voice/SpeechText.h"

using platform::SpeechText;

void Try(const QByteArray &bytes)
{
    const QString tagged = QString::fromUtf8(bytes);
    const SpeechText text = SpeechText::Parse(tagged);
    PROMISE(text.Shown().size() <= tagged.size());
    for (const platform::SpeechUnit &unit : text.units) {
        PROMISE(unit.pause >= 0 && unit.pause <= 10'000);
        PROMISE(!unit.spoken.contains(QLatin1Char('\\')));
    }
    if (!tagged.contains(QLatin1Char('\\')))
        PROMISE(text.Shown() == tagged.simplified());

    // What stands before a child's name never hides the word that is asked behind it, nor shows it.
    QString name = tagged;
    name.remove(QLatin1Char('"'));
    const SpeechText question =
        SpeechText::Parse(name + QStringLiteral(", how do you spell: \\map=\"zyzzyva\"=\"*****\"\\?"));
    PROMISE(name.contains(QStringLiteral("zyzzyva")) ||
            !question.Shown().contains(QStringLiteral("zyzzyva")));
}
