// What the canvas of the window costs, painted by the processor at 1920 x 1080: a table of medians
// beside the goals.

#include "document/document.h"
#include "session/session.h"
#include "window/canvas/canvas.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <malloc.h>
#include <map>
#include <memory>
#include <random>
#include <unistd.h>

namespace {

using shading::Canvas;
using shading::Session;

constexpr int kSizes[] = {500, 5000, 20000};
constexpr int kInSight = 500;
constexpr int kHubWires = 200;

/// A graph as artists make them: nodes that draw on what is near, a few on what is far, and a value
/// that feeds many. With places they stand as close as they can, about as wide as a screen: a chain
/// would be so long that nothing of it is seen when all of it is.
std::string documentOf(int size, bool hasPlaces)
{
    const int columns = std::max(1, static_cast<int>(std::sqrt(size * 1.2)));
    std::mt19937 random(3); // NOLINT(bugprone-random-generator-seed): the same one each time.
    const auto below = [&](int end) {
        return static_cast<int>(random() % static_cast<unsigned>(end));
    };
    const char* const kinds[] = {"multiply", "add", "subtract", "max", "power"};
    std::string text = "<?xml version=\"1.0\"?>\n<materialx version=\"1.39\">\n"
                       "<nodegraph name=\"NG\">\n<input name=\"age\" type=\"float\" value=\"1\"/>\n"
                       "<constant name=\"n0\" type=\"float\"" +
                       std::string(hasPlaces ? " xpos=\"0\" ypos=\"0\"" : "") + "/>\n";
    const auto input = [&](const char* name, int source) {
        text += std::string("<input name=\"") + name + "\" type=\"float\" nodename=\"n" +
                std::to_string(source) + "\"/>";
    };
    for (int i = 1; i < size; ++i) {
        const char* const kind = kinds[below(5)];
        text += std::string("<") + kind + " name=\"n" + std::to_string(i) + "\" type=\"float\"";
        if (hasPlaces)
            text += " xpos=\"" + std::to_string(i % columns * 1.25) + "\" ypos=\"" +
                    std::to_string(i / columns * 0.9) + "\"";
        text += ">";
        const bool isHubs = i % (size / kHubWires) == 0;
        const int reach = std::min(i, below(9) == 0 ? 300 : 12);
        if (i > 8)
            input("in1", i - 1 - below(reach));
        if (isHubs || (i > 8 && below(3) > 0))
            input("in2", isHubs ? 0 : i - 1 - below(reach));
        text += std::string("</") + kind + ">\n";
    }
    return text + "<output name=\"out\" type=\"float\" nodename=\"n" + std::to_string(size - 1) +
           "\"/>\n</nodegraph>\n</materialx>\n";
}

std::size_t allocated()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// A document of so many nodes in a file, and open on a canvas.
class Shown {
public:
    explicit Shown(int size, bool hasPlaces = true)
        : m_path("/tmp/zelCanvasBench" + std::to_string(getpid()) + (hasPlaces ? "" : "free") +
                 ".mtlx")
    {
        std::ofstream(m_path) << documentOf(size, hasPlaces);
        canvas.resize(1920, 1080);
        open();
        paint(); // The picture itself is not a matter of nodes.
        const std::size_t before = allocated();
        enter();
        bytesPerNode = static_cast<double>(allocated() - before) / size;
    }
    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;
    ~Shown()
    {
        close();
        std::remove(m_path.c_str());
    }

    void open()
    {
        std::vector<shading::Message> messages;
        session = Session::open(environment(), m_path, {}, messages);
    }
    void close()
    {
        canvas.showNothing();
        memory.clear();
        session.reset();
    }
    void enter()
    {
        canvas.showNothing();
        memory.clear();
        const shading::NodePtr graph = session->document().findNodeFromPath("Top.NG");
        canvas.showCompound(session->document(), graph->getAsCompound(), memory);
        while (!canvas.scene())
            QCoreApplication::processEvents();
        paint();
    }
    void paint() { canvas.render(&m_image); }

    /// So near that about so many boxes are in sight. Ends the program when that cannot be: the
    /// table would tell of something else.
    void showAbout(int count)
    {
        const QPointF centre = canvas.scene()->bounds().center();
        int seen = 0;
        double scale = 1;
        for (int i = 0; i < 200 && std::abs(seen - count) > count / 10; ++i) {
            scale *= seen > count ? 1.02 : 1 / 1.02;
            canvas.setView(scale, centre);
            seen = 0;
            canvas.scene()->forBoxes(canvas.view().seen(), [&](int) { ++seen; });
        }
        if (std::abs(seen - count) > count / 10 || scale < shading::kTitlesFrom) {
            std::fprintf(stderr, "%d boxes in sight at the scale %g\n", seen, scale);
            std::exit(1);
        }
    }

    Canvas canvas;
    std::unique_ptr<Session> session;
    shading::ScreenMemory memory;
    double bytesPerNode = 0;

private:
    static const Session::EnvironmentPtr& environment()
    {
        static std::string problem;
        static const auto made = std::make_shared<shading::Environment>(SHADING_PLUGIN, problem);
        return made;
    }

    std::string m_path;
    QImage m_image = QImage(1920, 1080, QImage::Format_RGB32);
};

struct Job {
    const char* name;
    const char* goal;
    int most; ///< Iterations.
    /// Makes ready; what is returned is measured.
    std::function<std::function<void()>(Shown&)> prepare;
};

std::function<void()> panning(Shown& shown)
{
    return [&shown, step = 0]() mutable {
        shown.canvas.panBy(++step / 40 % 2 == 0 ? QPointF(-13, 7) : QPointF(13, -7));
        shown.paint();
    };
}

std::function<void()> zooming(Shown& shown)
{
    return [&shown, step = 0]() mutable {
        shown.canvas.zoomAt(QPointF(900, 500), ++step / 3 % 2 == 0 ? 1.04 : 1 / 1.04);
        shown.paint();
    };
}

const Job kJobs[] = {
    {"pan, 500 nodes in sight", "16 ms", 200,
     [](Shown& shown) {
         shown.showAbout(kInSight);
         return panning(shown);
     }},
    {"zoom, 500 nodes in sight", "16 ms", 100,
     [](Shown& shown) {
         shown.showAbout(kInSight);
         return zooming(shown);
     }},
    {"pan, at life size", "16 ms", 200,
     [](Shown& shown) {
         shown.canvas.setView(1, shown.canvas.scene()->bounds().center());
         return panning(shown);
     }},
    {"pan, all in sight", "33 ms", 100,
     [](Shown& shown) {
         shown.canvas.frameAll();
         return panning(shown);
     }},
    {"zoom, all in sight", "33 ms", 60,
     [](Shown& shown) {
         shown.canvas.frameAll();
         return zooming(shown);
     }},
    {"hit test", "0.5 ms", 20000,
     [](Shown& shown) {
         shown.showAbout(kInSight);
         return [&shown, step = 0U]() mutable {
             step = step * 1664525U + 1013904223U;
             const QPointF pixel(step % 1920, step / 1920 % 1080);
             benchmark::DoNotOptimize(shown.canvas.hitAt(pixel));
         };
     }},
    {"drag a node with 200 wires", "16 ms", 100,
     [](Shown& shown) {
         const shading::NodePtr hub = shown.session->document().findNodeFromPath("Top.NG.n0");
         const int box = shown.canvas.scene()->boxOf(hub.get());
         const QRectF rect = shown.canvas.scene()->boxes()[static_cast<std::size_t>(box)].rect;
         shown.canvas.setView(0.4, rect.center() + QPointF(2000, 1200));
         return [&shown, box, step = 0]() mutable {
             ++step;
             shown.canvas.setOffset({box}, QPointF(step % 50 * 3, step % 30 * 4));
             shown.paint();
         };
     }},
    {"enter the compound", "150 ms for 5,000", 5,
     [](Shown& shown) { return [&shown] { shown.enter(); }; }},
    {"enter it when it has no places", "", 5,
     [](Shown& shown) {
         const auto other = std::make_shared<Shown>(shown.canvas.scene()->nodeCount(), false);
         return [other] { other->enter(); };
     }},
    {"open the document and show it", "2 s for 20,000", 3,
     [](Shown& shown) {
         return [&shown] {
             shown.close();
             shown.open();
             shown.enter();
         };
     }},
};

/// Keeps the medians.
class Collector : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& /*context*/) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.aggregate_name == "median")
                medians[run.run_name.function_name] = run.GetAdjustedRealTime();
        }
    }

    std::map<std::string, double> medians; ///< In milliseconds.
};

std::string timeText(double milliseconds)
{
    char text[32];
    if (milliseconds < 0.1)
        std::snprintf(text, sizeof text, "%.1f µs", milliseconds * 1000);
    else
        std::snprintf(text, sizeof text, milliseconds < 10 ? "%.1f ms" : "%.0f ms", milliseconds);
    return text;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    Collector collector;
    std::map<int, double> bytes;
    for (const int size : kSizes) {
        Shown shown(size);
        bytes[size] = shown.bytesPerNode;
        for (const Job& job : kJobs) {
            const std::string name = std::string(job.name) + "/" + std::to_string(size);
            benchmark::RegisterBenchmark(name.c_str(),
                                         [&](benchmark::State& state) {
                                             const std::function<void()> run = job.prepare(shown);
                                             run();
                                             for (auto _ : state)
                                                 run();
                                         })
                ->Iterations(job.most)
                ->Repetitions(3)
                ->MeasureProcessCPUTime()
                ->UseRealTime()
                ->Unit(benchmark::kMillisecond);
        }
        benchmark::RunSpecifiedBenchmarks(&collector);
        benchmark::ClearRegisteredBenchmarks();
    }
    std::printf(
        "| what | goal | 500 nodes | 5,000 nodes | 20,000 nodes |\n|---|---|---|---|---|\n");
    for (const Job& job : kJobs) {
        std::printf("| %s | %s |", job.name, job.goal);
        for (const int size : kSizes) {
            for (const auto& [name, median] : collector.medians) {
                if (name.rfind(std::string(job.name) + "/" + std::to_string(size) + "/", 0) == 0 ||
                    name == std::string(job.name) + "/" + std::to_string(size))
                    std::printf(" %s |", timeText(median).c_str());
            }
        }
        std::printf("\n");
    }
    std::printf("| memory for each node, beside the document's | |");
    for (const int size : kSizes)
        std::printf(" %.0f bytes |", bytes[size]);
    std::printf("\n");
    return 0;
}
