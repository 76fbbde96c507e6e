#pragma once

#include "platform/voice/LetterRecogniser.h"

namespace platform {

// The recogniser of the PocketSphinx library with its model of American English; its files lie in `model`,
// or where the system keeps them. They are read when the first letter is to be understood, some 30 MB, and
// kept from then on. Grown-ups' and children's voices are both tried.
class SphinxRecogniser final : public LetterRecogniser {
public:
    explicit SphinxRecogniser(QString model = QString());
    ~SphinxRecogniser() override; // waits for what is being understood, a fraction of a second

    QString Obstacle() const override;
    void Prepare() override;
    [[nodiscard]] std::unique_ptr<Order> Recognise(QByteArray samples, Ready ready) override;

    // The same on the calling thread, for measurements.
    static QStringList Understand(const QString &model, const QByteArray &samples);
    // Where the system keeps the model.
    static QString UsualModel();

private:
    class Worker;
    const QString m_model;
    std::unique_ptr<Worker> m_worker; // made by the first order
};

} // namespace platform
