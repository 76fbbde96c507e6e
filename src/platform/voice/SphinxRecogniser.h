#pragma once

#include "platform/voice/LetterRecogniser.h"
#include "platform/voice/Workshop.h"

namespace platform {

// The recogniser of the PocketSphinx library with its model of American English; its files lie in `model`,
// or where the system keeps them. They are read when the first letter is to be understood, some 30 MB, and
// kept from then on. Grown-ups' and children's voices are both tried.
class SphinxRecogniser final : public LetterRecogniser {
public:
    explicit SphinxRecogniser(const QString &model = QString());
    ~SphinxRecogniser() override; // waits for what is being understood, a fraction of a second

    QString Obstacle() const override;
    void Prepare() override;
    [[nodiscard]] std::unique_ptr<Order> Recognise(QByteArray samples, Ready ready) override;

    // The same on the calling thread, for measurements; files that were read are kept for the same model.
    static QStringList Understand(const QString &model, const QByteArray &samples);
    // Where the system keeps the model.
    static QString UsualModel();

private:
    class Ear;
    const std::shared_ptr<Ear> m_ear;     // only the thread listens with it
    std::unique_ptr<Workshop> m_workshop; // made by the first order
    std::unique_ptr<Order> m_prepared;
};

} // namespace platform
