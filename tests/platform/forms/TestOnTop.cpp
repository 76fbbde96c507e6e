#include "platform/forms/OnTop.h"

#include <QTest>

using platform::FreePlace;
using platform::OnTop;

namespace {

class Puppet : public OnTop {
public:
    explicit Puppet(const QRect &hidden) : m_hidden(hidden) {}

private:
    QRect Hidden() const override { return m_hidden; }

    const QRect m_hidden;
};

} // namespace

// What lies over all windows, and the places beside it.
class TestOnTop : public QObject {
    Q_OBJECT
private slots:
    void allThatAreSeenTellWhatTheyHide()
    {
        QCOMPARE(OnTop::Areas().size(), std::size_t(0));
        const Puppet one(QRect(10, 20, 30, 40));
        const Puppet unseen((QRect()));
        {
            const Puppet other(QRect(100, 20, 30, 40));
            QCOMPARE(OnTop::Areas(), (std::vector<QRect>{ { 10, 20, 30, 40 }, { 100, 20, 30, 40 } }));
        }
        QCOMPARE(OnTop::Areas(), (std::vector<QRect>{ { 10, 20, 30, 40 } }));
    }

    void theNearestFreePlaceIsTaken_data()
    {
        QTest::addColumn<QRect>("wanted");
        QTest::addColumn<QList<QRect>>("taken");
        QTest::addColumn<QRect>("place");
        const QRect middle(200, 220, 400, 160);
        const auto row = [](const char *name, const QRect &wanted, QList<QRect> taken, QPoint place) {
            QTest::newRow(name) << wanted << taken << QRect(place, wanted.size());
        };
        row("nothing there", middle, {}, { 200, 220 });
        row("somebody elsewhere", middle, { { 0, 0, 150, 150 } }, { 200, 220 });
        row("from above", middle, { { 460, 10, 196, 244 } }, { 200, 254 });
        row("from below", middle, { { 460, 350, 196, 244 } }, { 200, 190 });
        row("from the left", middle, { { 10, 150, 196, 300 } }, { 206, 220 });
        row("from the right", middle, { { 590, 150, 196, 300 } }, { 190, 220 });
        row("touching is not covering", middle, { { 600, 220, 100, 100 } }, { 200, 220 });
        row("three in a row", middle,
            { { 10, 180, 196, 244 }, { 140, 180, 196, 244 }, { 260, 180, 196, 244 } }, { 200, 20 });
        row("wanted beyond the edge", { 700, -30, 400, 160 }, {}, { 400, 0 });
        row("no place is free", middle, { { 0, 0, 800, 500 } }, { 200, 440 });
        row("larger than the screen", { -50, 100, 1000, 160 }, {}, { 0, 100 });
    }
    void theNearestFreePlaceIsTaken()
    {
        QFETCH(QRect, wanted);
        QFETCH(QList<QRect>, taken);
        QFETCH(QRect, place);
        QCOMPARE(FreePlace(wanted, { taken.begin(), taken.end() }, QRect(0, 0, 800, 600)), place);
    }
};

QTEST_APPLESS_MAIN(TestOnTop)
#include "TestOnTop.moc"
