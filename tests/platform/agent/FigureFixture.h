#pragma once

#include "platform/agent/PuppetFigure.h"
#include "support/FakeOptionsStore.h"
#include "support/FakeVoice.h"
#include "support/SmallCharacter.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTest>

// One real figure in a window of its own, with a fake voice and a time that the test lets pass.
class FigureFixture : public QObject {
protected:
    static constexpr qint32 kNotEnded = -1;
    using milliseconds = std::chrono::milliseconds;

    void MakeFigure()
    {
        m_time = std::make_unique<support::FakeTime>();
        m_engine = std::make_unique<support::FakeSpeechEngine>(*m_time);
        m_audio = std::make_unique<support::FakeAudioOut>(*m_time, *m_time);
        m_store = support::FakeOptionsStore();
        m_options = std::make_unique<platform::OptionsKeeper>(m_store);
        m_character = support::SmallCharacter();
        auto ticker = std::make_unique<support::FakeTicker>(*m_time);
        m_ticker = ticker.get();
        m_figure = std::make_unique<platform::PuppetFigure>(m_character, *m_engine, *m_audio, *m_time,
                                                            *m_options, std::move(ticker), 7);
        m_number = kNotEnded;
        m_ends = 0;
    }
    void DropFigure()
    {
        m_figure.reset();
        m_options.reset();
        m_audio.reset();
        m_engine.reset();
        m_time.reset();
    }

    platform::Figure::Done End()
    {
        return [this](qint32 number) {
            m_number = number;
            ++m_ends;
        };
    }
    int Inked() const
    {
        int inked = 0;
        const QImage &image = m_figure->Picture();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                inked += qAlpha(image.pixel(x, y)) > 20;
        }
        return inked;
    }
    double Prop() const { return m_figure->Player().Frames()[7].opacity; }
    static platform::BalloonWindow *Balloon()
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *balloon = qobject_cast<platform::BalloonWindow *>(widget);
                balloon && balloon->isVisible())
                return balloon;
        }
        return nullptr;
    }
    static QString BalloonText() { return Balloon() ? Balloon()->ShownText() : QString(); }
    void Choose(const std::function<void(platform::ServiceOptions &)> &choice)
    {
        platform::ServiceOptions options = m_options->Now();
        choice(options);
        m_options->Set(options);
    }
    void Mouse(QEvent::Type type, QPoint at, Qt::MouseButton button)
    {
        const QPoint local = at - m_figure->Frame().topLeft();
        const bool moves = type == QEvent::MouseMove;
        const Qt::MouseButtons held =
            type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
        QMouseEvent event(type, QPointF(local), QPointF(at), moves ? Qt::NoButton : button, held,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&m_figure->Window(), &event);
    }

    std::unique_ptr<support::FakeTime> m_time;
    std::unique_ptr<support::FakeSpeechEngine> m_engine;
    std::unique_ptr<support::FakeAudioOut> m_audio;
    support::FakeOptionsStore m_store;
    std::unique_ptr<platform::OptionsKeeper> m_options;
    std::shared_ptr<const platform::CharacterData> m_character;
    support::FakeTicker *m_ticker = nullptr;
    std::unique_ptr<platform::PuppetFigure> m_figure;
    qint32 m_number = kNotEnded;
    int m_ends = 0;
};
