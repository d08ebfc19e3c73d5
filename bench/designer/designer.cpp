// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the designer's canvas over a report of 500 text boxes: from a change of one property to the
// painted screen, and the frames of a drag.
#include <QApplication>
#include <QMouseEvent>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "bench/timing.h"
#include "designer/canvas/design_canvas.h"
#include "designer/document/editing.h"
#include "designer/model/design_model.h"

namespace {

constexpr int Columns = 10, Rows = 50, Rounds = 21;

double MillisecondsOf(const std::function<void()>& work) {
    return 1000 * Seconds(work);
}

std::string Report() {
    std::string items;
    for (int n = 0; n < Columns * Rows; ++n) {
        items += "<Textbox Name=\"Box" + std::to_string(n) +
                 "\"><Paragraphs><Paragraph><TextRuns><TextRun><Value>=Fields!Amount" + std::to_string(n) +
                 ".Value</Value><Style/></TextRun></TextRuns></Paragraph></Paragraphs><Top>" +
                 std::to_string(n / Columns * 7) + "mm</Top><Left>" + std::to_string(n % Columns * 20) +
                 "mm</Left><Height>6mm</Height><Width>18mm</Width><Style/></Textbox>\n";
    }
    return "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition\">"
           "<ReportSections><ReportSection><Body><ReportItems>" +
           items + "</ReportItems><Height>" + std::to_string(Rows * 7) +
           "mm</Height></Body><Width>200mm</Width><Page/></ReportSection></ReportSections></Report>";
}

void Say(const char* what, const std::vector<double>& times) {
    std::printf("%s: median %.1f ms, slowest %.1f ms\n", what, Median(times),
                *std::max_element(times.begin(), times.end()));
}

void SendMouse(QWidget& view, QEvent::Type type, QPointF at) {
    const bool isMove = type == QEvent::MouseMove;
    QMouseEvent event(type, at, view.mapToGlobal(at), isMove ? Qt::NoButton : Qt::LeftButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&view, &event);
}

}  // namespace

int main(int argc, char** argv) {
    if (!std::getenv("DISPLAY") && !std::getenv("QT_QPA_PLATFORM")) {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    const QApplication application(argc, argv);
    designer::DesignModel model{designer::Document(Report())};
    designer::DesignCanvas canvas(model);
    canvas.resize(1000, 800);
    canvas.show();
    std::printf("first picture: %.1f ms\n", MillisecondsOf([&] {
                    canvas.Refresh();
                    canvas.viewport()->repaint();
                }));
    const designer::ElementId box = model.Items().items.at(Columns + 2).id;
    std::vector<double> changes, frames;
    for (int round = 0; round < Rounds; ++round) {
        changes.push_back(MillisecondsOf([&] {
            model.Edit("Change", [&](designer::Document& document) {
                SetText(document, box, "Style/Color", round % 2 == 0 ? "Red" : "Blue");
            });
            canvas.Refresh();
            canvas.viewport()->repaint();
        }));
    }
    Say("property change to screen", changes);
    QWidget& view = *canvas.viewport();
    const QPointF begin = canvas.AreaOf(box).center();
    SendMouse(view, QEvent::MouseButtonPress, begin);
    for (int step = 1; step <= 100; ++step) {
        frames.push_back(MillisecondsOf([&] {
            SendMouse(view, QEvent::MouseMove, begin + QPointF(step, step * 2));
            view.repaint();
        }));
    }
    SendMouse(view, QEvent::MouseButtonRelease, begin + QPointF(100, 200));
    Say("frame of a drag", frames);
    return 0;
}
