#include "support/SmallCharacter.h"

#include "platform/agent/OrderedJson.h"

#include <QDir>
#include <QFile>

namespace support {

namespace {

const char kFigure[] = R"({
  "name": "Merlin", "size": [128, 128], "mouth_point": [128, 110], "face": [96, 60, 64, 70],
  "voice": { "voice": "cmu_us_awb", "stretch": 1.1, "pitch": 0.9, "rate": 1.0, "treble": 6 },
  "parts": [
    { "name": "figure", "pivot": [128, 254], "drawing": "" },
    { "name": "body", "parent": "figure", "pivot": [128, 250] },
    { "name": "tip", "parent": "head", "pivot": [128, 40], "drawing": "hat",
      "lag": { "swing": 1, "stiffness": 60, "damping": 7, "limit": 30 } },
    { "name": "head", "parent": "body", "pivot": [128, 130] },
    { "name": "lids", "parent": "head", "pivot": [128, 80], "variants": { "open": "", "shut": "lids_shut" } },
    { "name": "mouth", "parent": "head", "pivot": [128, 110],
      "variants": { "rest": "m0", "mbp": "m1", "fv": "m2", "thl": "m3", "cons": "m4", "aa": "m5", "eh": "m6",
                    "ee": "m7", "oh": "m8", "oo": "m9" } },
    { "name": "arm", "parent": "body", "pivot": [170, 160], "variants": { "rest": "arm_rest", "open": "arm_open" } },
    { "name": "prop", "parent": "arm", "pivot": [200, 200], "hidden": true }
  ],
  "mouths": {
    "Rest": { "mouth.swap": "rest" }, "MBP": { "mouth.swap": "mbp" }, "FV": { "mouth.swap": "fv" },
    "ThL": { "mouth.swap": "thl" }, "Cons": { "mouth.swap": "cons" },
    "AA": { "mouth.swap": "aa", "head.y": 3 }, "EH": { "mouth.swap": "eh" }, "EE": { "mouth.swap": "ee" },
    "OH": { "mouth.swap": "oh" }, "OO": { "mouth.swap": "oo" }
  },
  "blink": { "length": 0.2, "curves": { "lids.swap": [[0, "shut"], [0.15, "open"]] } },
  "breath": { "length": 4, "curves": { "body.sy": [[0, 0], [2, 0.02], [4, 0]] } },
  "accents": [ { "length": 0.4, "curves": { "head.turn": [[0, 0], [0.1, 4], [0.4, 0]] } } ],
  "idle": [["Blink", "Nod"], ["Nod", "Wave"], ["Doze"]]
})";

struct MotionText {
    const char *name;
    const char *text;
};

// clang-format off
const MotionText kMotions[] = {
    { "Show", R"({ "length": 1, "return": "none", "curves": { "figure.fade": [[0, -1], [1, 0]] } })" },
    { "Hide", R"({ "length": 1, "return": "none", "curves": { "figure.fade": [[0, 0], [1, -1]] } })" },
    { "RestPose", R"({ "length": 0.6, "return": "none", "speaks": true, "curves": {} })" },
    { "Blink", R"({ "length": 0.6, "return": "none", "curves": { "lids.swap": [[0, "open"], [0.2, "shut"], [0.4, "open"]] } })" },
    { "Wave", R"({ "length": 1.2, "return": "blend", "speaks": true, "still": ["arm"],
        "curves": { "arm.turn": [[0, 0], [0.4, -100, "out"], [1.2, -90]], "arm.swap": [[0.2, "open"]] } })" },
    { "Acknowledge", R"({ "length": 0.8, "return": "blend", "curves": { "head.y": [[0, 0], [0.4, 8], [0.8, 4]] } })" },
    { "Nod", R"({ "length": 0.8, "return": "none", "curves": { "head.y": [[0, 0], [0.4, 8], [0.8, 0]] } })" },
    { "Read", R"({ "length": 1, "return": "ReadReturn", "speaks": true,
        "curves": { "arm.turn": [[0, 0], [0.5, -40]], "prop.fade": [[0, 0], [0.4, 1]] } })" },
    { "ReadContinued", R"({ "length": 1, "return": "ReadReturn", "speaks": true,
        "curves": { "arm.turn": [[0, -40], [0.5, -45], [1, -40]], "prop.fade": [[0, 1]] } })" },
    { "ReadReturn", R"({ "length": 0.6, "return": "none",
        "curves": { "arm.turn": [[0, -40], [0.6, 0]], "prop.fade": [[0, 1], [0.5, 0]] } })" },
    { "Doze", R"({ "length": 3, "return": "blend", "loop": [1, 3],
        "curves": { "head.turn": [[0, 0], [1, 20], [2, 26], [3, 20]], "lids.swap": [[0.5, "shut"]] } })" },
    { "MoveLeft", R"({ "length": 1, "return": "blend", "aloft": [0.4, 1],
        "curves": { "body.turn": [[0, 0], [0.4, 15], [0.7, 18], [1, 15]] } })" },
    { "MoveRight", R"({ "length": 1, "return": "blend", "aloft": [0.4, 1],
        "curves": { "body.turn": [[0, 0], [0.4, -15], [0.7, -18], [1, -15]] } })" },
    { "MoveUp", R"({ "length": 1, "return": "blend", "aloft": [0.4, 1], "curves": { "body.y": [[0, 0], [0.4, -5]] } })" },
    { "MoveDown", R"({ "length": 1, "return": "blend", "aloft": [0.4, 1], "curves": { "body.y": [[0, 0], [0.4, 5]] } })" },
    { "GestureDown", R"({ "length": 0.8, "return": "blend", "speaks": true, "curves": { "arm.turn": [[0, 0], [0.8, -30]] } })" },
    { "GestureLeft", R"({ "length": 0.8, "return": "blend", "speaks": true, "curves": { "arm.turn": [[0, 0], [0.8, -60]] } })" },
    { "Idle3_2", R"({ "length": 3, "return": "blend", "loop": [1, 3], "curves": { "head.turn": [[0, 0], [1, 20]] } })" },
};
// clang-format on

QByteArray Drawing()
{
    QByteArray svg = R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 256 256">
        <g id="body"><rect x="80" y="130" width="96" height="124" fill="#335599"/></g>
        <g id="head"><circle cx="128" cy="90" r="40" fill="#ffddbb"/></g>
        <g id="hat"><rect x="118" y="10" width="20" height="44" fill="#224488"/></g>
        <g id="lids_shut"><rect x="106" y="74" width="44" height="10" fill="#664422"/></g>
        <g id="arm_rest"><rect x="166" y="156" width="16" height="60" fill="#4466aa"/></g>
        <g id="arm_open"><rect x="164" y="156" width="20" height="66" fill="#4466aa"/></g>
        <g id="prop"><rect x="190" y="190" width="24" height="20" fill="#cc3333"/></g>
        )";
    for (int mouth = 0; mouth < 10; ++mouth)
        svg +=
            QStringLiteral(
                "<g id=\"m%1\"><rect x=\"114\" y=\"106\" width=\"28\" height=\"%2\" fill=\"#aa2222\"/></g>")
                .arg(mouth)
                .arg(3 + mouth)
                .toUtf8();
    return svg + "</svg>";
}

} // namespace

platform::CharacterSource SmallCharacterSource(const QString &name)
{
    platform::CharacterSource source;
    source.drawing = Drawing();
    source.figure = platform::ReadOrderedJson(kFigure).toMap();
    source.figure.insert(QStringLiteral("name"), name);
    for (const MotionText &motion : kMotions)
        source.motions.insert(QLatin1String(motion.name), platform::ReadOrderedJson(motion.text).toMap());
    return source;
}

std::shared_ptr<const platform::CharacterData> SmallCharacter()
{
    const platform::CharacterSource source = SmallCharacterSource();
    return std::make_shared<const platform::CharacterData>(
        platform::ReadCharacter(source.drawing, source.figure, source.motions));
}

void WriteSmallCharacter(const QString &folder, const QString &name)
{
    QFile file(QDir(folder).filePath(name + QStringLiteral(".acs")));
    const QByteArray bytes = platform::PackCharacter(SmallCharacterSource(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("The test character cannot be written to %s.", qPrintable(folder));
}

void FakeTicker::SetRate(int callsPerSecond)
{
    if (callsPerSecond == m_rate)
        return;
    m_rate = callsPerSecond;
    Await();
}

void FakeTicker::Await()
{
    m_next.reset();
    if (m_rate == 0)
        return;
    m_next = m_time.After(std::chrono::milliseconds(1000 / m_rate), [this] {
        Await();
        tick();
    });
}

} // namespace support
