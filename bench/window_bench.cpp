// SPDX-License-Identifier: GPL-3.0-or-later
// What shows, in real windows without a screen, each job ("name/size") beside its bare loop
// ("name:bare/size"). The bare loop of the map in colours is the map without them.
#include "analysis/LagDistancePlot.h"
#include "app/frmMain.h"
#include "bench/bare_loops.h"
#include "bench/made_field.h"
#include "desktop/Guarded.h"
#include "drawing/PictureBox.h"
#include "plots/RowPlotEditor.h"
#include "plots/SurveyGridPlot.h"
#include "plots/frmClip.h"
#include "program/RowDialog.h"
#include "rows/frmDataEdit.h"
#include "support/survey_under_test.h"

#include <QMouseEvent>
#include <benchmark/benchmark.h>

namespace tessel {

namespace {

constexpr QSize kMapSize(1000, 800);
constexpr int kDot = 2;

// The survey of the process is made anew only when the size changes.
Survey& openField(SiteIndex sites) {
    Survey& survey = surveyUnderTest();
    if (survey.NumSites != sites) survey = madeField(sites);
    return survey;
}

void countSites(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void sendMouse(QWidget& widget, QEvent::Type type, QPointF pixel, Qt::MouseButton button,
               Qt::KeyboardModifiers held) {
    const Qt::MouseButton pressed = type == QEvent::MouseMove ? Qt::NoButton : button;
    QMouseEvent event(type, pixel, widget.mapToGlobal(pixel), pressed, button, held);
    QApplication::sendEvent(&widget, &event);
    QApplication::processEvents();
}

void moveTo(QWidget& widget, QPointF pixel) {
    sendMouse(widget, QEvent::MouseMove, pixel, Qt::NoButton, Qt::NoModifier);
}

// A main window with the map of the survey above it, the picture of the wanted size.
struct Map {
    frmMain main;
    frmClip clip{&main};
    PictureBox& picture;

    Map() : picture(*clip.findChild<PictureBox*>(QStringLiteral("picMapZoom"))) {
        clip.show();
        clip.mnuFullMapMax_Click();
        QApplication::processEvents();
        // Twice: the line below takes as many lines of text as the first size needs.
        for (int i = 0; i < 2; ++i) {
            clip.resize(clip.size() + kMapSize - picture.size());
            QApplication::processEvents();
        }
    }
};

void displayMap(benchmark::State& state) {
    openField(state.range(0));
    Map map;
    if (map.picture.size() != kMapSize) return state.SkipWithError("the map has another size");
    for (auto _ : state)
        map.clip.DisplayMap();
    countSites(state);
}
void displayMapInColours(benchmark::State& state) {
    openField(state.range(0));
    Map map;
    map.clip.mnuColourEM1->trigger();
    for (auto _ : state)
        map.clip.DisplayMap();
    countSites(state);
}
void displayMapBare(benchmark::State& state) {
    const Survey& survey = openField(state.range(0));
    const SiteMaskArray mask(static_cast<std::size_t>(survey.NumSites), 0);
    BarePicture picture(kMapSize.width(), kMapSize.height());
    for (auto _ : state) {
        barePoints(picture, survey, mask.data(), kDot);
        benchmark::ClobberMemory();
    }
    countSites(state);
}

void moveOnMap(benchmark::State& state) {
    openField(state.range(0));
    Map map;
    map.clip.cmdClipOn_Click();
    map.clip.picMapZoom_MouseDown(0.1, 0.1);
    int step = 0;
    for (auto _ : state)
        moveTo(map.picture, QPointF(300 + (step++ % 400), 300));
    map.clip.cmdClipOff_Click();
}

// Row plots, which the main window owns.
struct FramedEditor {
    explicit FramedEditor(frmMain& main) : editor(new RowPlotEditor(main)) {}
    RowPlotEditor* const editor;
};

// A plot in a main window that is shown.
template <typename Plot>
struct ShownPlot {
    frmMain main;
    Plot plot{main};

    ShownPlot() {
        main.resize(1100, 900);
        main.show();
    }
};

// Points as a chart of the main window draws them, the first time and every time.
template <typename Plot, void (Plot::*Click)()>
void plotFirst(benchmark::State& state) {
    openField(state.range(0));
    ShownPlot<Plot> shown;
    for (auto _ : state) {
        (shown.plot.*Click)();
        QApplication::processEvents();
    }
    countSites(state);
}
template <void (*Discs)(BarePicture&, const Survey&)>
void gridBare(benchmark::State& state) {
    const Survey& survey = openField(state.range(0));
    BarePicture picture(kMapSize.width(), kMapSize.height());
    for (auto _ : state) {
        Discs(picture, survey);
        benchmark::ClobberMemory();
    }
    countSites(state);
}
void lagBare(benchmark::State& state) {
    const Survey& survey = openField(state.range(0));
    std::vector<double> distances(static_cast<std::size_t>(survey.NumSites) + 1);
    std::vector<double> rows(distances.size());
    BarePicture picture(kMapSize.width(), kMapSize.height());
    for (auto _ : state) {
        const double top = bareDistancesAndRows(survey, distances.data(), rows.data());
        bareLine(picture, std::span(distances).first(static_cast<std::size_t>(survey.NumSites)), top);
        benchmark::ClobberMemory();
    }
    countSites(state);
}

template <typename Plot, void (Plot::*Click)()>
void moveOnPlot(benchmark::State& state) {
    openField(state.range(0));
    ShownPlot<Plot> shown;
    (shown.plot.*Click)();
    QApplication::processEvents();
    auto& chart = *shown.main.template findChild<Chart2D*>();
    int step = 0;
    for (auto _ : state)
        moveTo(chart, QPointF(300 + (step++ % 400), 300));
}

// The red line of a lag distance plot beside the row dialog, one step of the pointer after another.
void dragLine(benchmark::State& state) {
    openField(state.range(0));
    ShownPlot<LagDistancePlot> shown;
    SurveyGridPlot grid(shown.main);
    RowDialog dialog(shown.main, shown.plot, grid);
    shown.plot.mnuTrue_Dis_Click();
    dialog.mnuData_Click();
    QApplication::processEvents();
    Chart2D& chart = *shown.plot.Chart2D1;
    sendMouse(chart, QEvent::MouseButtonPress, {300, 300}, Qt::LeftButton, Qt::ControlModifier);
    int step = 0;
    for (auto _ : state)
        sendMouse(chart, QEvent::MouseMove, QPointF(300, 300 + (step++ % 200)), Qt::LeftButton,
                  Qt::ControlModifier);
    if (shown.main.findChild<frmDataEdit*>()->lblRows->text().isEmpty())
        state.SkipWithError("the dialog does not follow");
    dialog.takeAway();
}

// A box on the map of a row: one step of the pointer after another, or the sites in it.
template <bool Whole>
void drawBox(benchmark::State& state) {
    openField(state.range(0));
    ShownPlot<FramedEditor> shown;
    RowPlotEditor& editor = *shown.plot.editor;
    editor.mnuY_Click();
    QApplication::processEvents();
    Chart2D& map = *editor.Chart2D4;
    const QRectF area = map.plotArea();
    const auto press = [&] {
        sendMouse(map, QEvent::MouseButtonPress, area.topLeft(), Qt::LeftButton, Qt::ShiftModifier);
    };
    const auto move = [&](int step) {
        sendMouse(map, QEvent::MouseMove, area.bottomRight() - QPointF(step % 200, 0), Qt::LeftButton,
                  Qt::ShiftModifier);
    };
    press();
    int step = 0;
    for (auto _ : state) {
        move(step++);
        if (!Whole) continue;
        sendMouse(map, QEvent::MouseButtonRelease, area.bottomRight(), Qt::LeftButton, Qt::ShiftModifier);
        press();
    }
    if (Whole && editor.selection().SelCount == 0) state.SkipWithError("the box holds nothing");
}

constexpr auto kGrid = &SurveyGridPlot::mnuGrid_Click;
constexpr auto kGridByReading = &SurveyGridPlot::mnuGridEM1_Click;
constexpr auto kLag = &LagDistancePlot::mnuTrue_Dis_Click;

void sizes(benchmark::internal::Benchmark* job) {
    for (const int size : {10'000, 100'000, 1'000'000, 5'000'000, 10'000'000})
        job->Arg(size);
    job->Unit(benchmark::kMillisecond);
}

BENCHMARK(displayMap)->Name("DisplayMap")->Apply(sizes);
BENCHMARK(displayMapBare)->Name("DisplayMap:bare")->Apply(sizes);
BENCHMARK(displayMapInColours)->Name("DisplayMap in colours")->Apply(sizes);
BENCHMARK(displayMap)->Name("DisplayMap in colours:bare")->Apply(sizes);
BENCHMARK(plotFirst<SurveyGridPlot, kGrid>)->Name("survey grid plot")->Apply(sizes);
BENCHMARK(plotFirst<SurveyGridPlot, kGridByReading>)->Name("survey grid by reading")->Apply(sizes);
BENCHMARK(gridBare<bareDiscs>)->Name("survey grid plot:bare")->Apply(sizes);
BENCHMARK(gridBare<bareDiscsByReading>)->Name("survey grid by reading:bare")->Apply(sizes);
BENCHMARK(plotFirst<LagDistancePlot, kLag>)->Name("lag distance plot")->Apply(sizes);
BENCHMARK(lagBare)->Name("lag distance plot:bare")->Apply(sizes);
BENCHMARK(moveOnMap)->Name("mouse move on the map")->Apply(sizes);
BENCHMARK(moveOnPlot<SurveyGridPlot, kGrid>)->Name("mouse move on the grid plot")->Apply(sizes);
BENCHMARK(moveOnPlot<LagDistancePlot, kLag>)->Name("mouse move on the lag plot")->Apply(sizes);
BENCHMARK(dragLine)->Name("drag of the red line")->Apply(sizes);
BENCHMARK(drawBox<false>)->Name("mouse move with a box")->Apply(sizes);
BENCHMARK(drawBox<true>)->Name("a box over a row")->Apply(sizes);

}  // namespace

}  // namespace tessel

using namespace tessel;

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
