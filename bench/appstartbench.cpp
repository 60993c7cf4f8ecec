// Cold start of the app to the first frame that shows a reading, as the median of five
// runs each on the mock camera and on the file camera (recorded footage), off screen.
// Each run launches the built `kestrum --quit-after-first-reading` afresh, on settings,
// pictures and data folders of its own, and times from the launch until the app reports
// that frame. Target: under 500 ms.
//
// Run: build/bench/bench_appstart [runs, default 5]

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <vector>

namespace {

constexpr int kDefaultRuns = 5;
constexpr int kRunTimeoutMs = 30'000;

// One cold start: milliseconds until the first reading was on screen, or nothing when
// the app did not get there.
std::optional<qint64> coldStart(const QProcessEnvironment& camera)
{
    QTemporaryDir home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(camera);
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("KESTRUM_SETTINGS", home.filePath("settings.ini"));
    environment.insert("KESTRUM_PICTURES", home.filePath("Pictures"));
    environment.insert("KESTRUM_POSITION_SOURCE", "none");
    environment.insert("XDG_DATA_HOME", home.filePath("data"));
    environment.insert("XDG_CACHE_HOME", home.filePath("cache"));
    environment.insert("XDG_RUNTIME_DIR", home.path());
    QProcess app;
    app.setProcessEnvironment(environment);
    app.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QElapsedTimer sinceLaunch;
    sinceLaunch.start();
    app.start(KESTRUM_APP, {"--quit-after-first-reading"});
    while (app.waitForReadyRead(kRunTimeoutMs)) {
        if (app.readAllStandardOutput().contains("first reading")) {
            const qint64 elapsedMs = sinceLaunch.elapsed();
            app.waitForFinished(kRunTimeoutMs);
            return elapsedMs;
        }
    }
    app.kill();
    app.waitForFinished();
    return std::nullopt;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, QByteArray(argv[1]).toInt()) : kDefaultRuns;
    const std::pair<const char*, QProcessEnvironment> cameras[] = {
        {"mock camera",
         [] {
             QProcessEnvironment mock;
             mock.insert("SIMULATOR_MODEL_IDENTIFIER", "Linux");
             return mock;
         }()},
        {"file camera",
         [] {
             QProcessEnvironment footage;
             footage.insert("KESTRUM_CAMERA", "file:" KESTRUM_FOOTAGE);
             return footage;
         }()},
    };
    int status = 0;
    for (const auto& [name, camera] : cameras) {
        std::vector<qint64> times;
        for (int run = 0; run < runs; ++run) {
            if (const auto ms = coldStart(camera))
                times.push_back(*ms);
        }
        if (times.size() != std::size_t(runs)) {
            std::printf("%s: only %zu of %d runs showed a reading\n", name, times.size(), runs);
            status = 1;
            continue;
        }
        std::sort(times.begin(), times.end());
        std::printf("%s: cold start to the first reading on screen: median %lld ms "
                    "(fastest %lld, slowest %lld; %d runs)\n",
                    name, static_cast<long long>(times[times.size() / 2]),
                    static_cast<long long>(times.front()), static_cast<long long>(times.back()),
                    runs);
    }
    return status;
}
