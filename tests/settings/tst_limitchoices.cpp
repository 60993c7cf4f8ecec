#include "settings/limitchoices.h"

#include <QTest>

using namespace kestrum;

namespace {

template <typename C> QString displays(const std::vector<C>& entries)
{
    QStringList texts;
    for (const C& entry : entries)
        texts.append(entry.display);
    return texts.join(u' ');
}

} // namespace

// The choices of the profile editor's limit pickers: each side of a scale cut at its pivot.
class LimitChoicesTest : public QObject {
    Q_OBJECT

private slots:
    void choices_data()
    {
        QTest::addColumn<QString>("component");
        QTest::addColumn<Fraction>("step");
        QTest::addColumn<QString>("minimum");
        QTest::addColumn<QString>("maximum");
        QTest::newRow("iso full") << "iso" << Fraction::full << "12 25 50 100"
                                  << "400 800 1600 3200 6400";
        QTest::newRow("aperture full") << "aperture" << Fraction::full << "0.7 1 1.4 2 2.8 4"
                                       << "16 22 32 45";
        QTest::newRow("speed full") << "speed" << Fraction::full << "30s 15s 8s 4s 2s 1s 2 4 8"
                                    << "500 1000 2000 4000 8000";
        QTest::newRow("speed half")
            << "speed" << Fraction::half << "30s 20s 15s 10s 8s 6s 4s 3s 2s 1.5s 1s 1.5 2 3 4 6 8"
            << "500 750 1000 1500 2000 3000 4000 6000 8000";
    }

    void choices()
    {
        QFETCH(QString, component);
        QFETCH(Fraction, step);
        QFETCH(QString, minimum);
        QFETCH(QString, maximum);
        if (component == u"iso") {
            QCOMPARE(displays(minimumChoices<ISO>(step)), minimum);
            QCOMPARE(displays(maximumChoices<ISO>(step)), maximum);
        } else if (component == u"aperture") {
            QCOMPARE(displays(minimumChoices<Aperture>(step)), minimum);
            QCOMPARE(displays(maximumChoices<Aperture>(step)), maximum);
        } else {
            QCOMPARE(displays(minimumChoices<ShutterSpeed>(step)), minimum);
            QCOMPARE(displays(maximumChoices<ShutterSpeed>(step)), maximum);
        }
    }
};

QTEST_GUILESS_MAIN(LimitChoicesTest)
#include "tst_limitchoices.moc"
