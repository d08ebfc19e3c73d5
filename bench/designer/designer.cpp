// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the designer over a report of 500 text boxes: a window from opening the file to the painted
// screen, a change of one property until it is painted, the frames of a drag, and all items as a group and
// pasted. And a column that is inserted into a table of 5,000 rows.
#include <stdlib.h>
#include <QApplication>
#include <QMouseEvent>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "bench/timing.h"
#include "designer/canvas/design_canvas.h"
#include "designer/document/editing.h"
#include "designer/model/design_model.h"
#include "designer/model/item_clipboard.h"
#include "designer/model/item_grouping.h"
#include "designer/model/placing.h"
#include "designer/tables/tracks.h"
#include "designer/window/design_window.h"

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

// A window from nothing until all of it is painted.
double OpeningOf(const std::filesystem::path& file) {
    return MillisecondsOf([&] {
        auto* window = new designer::DesignWindow;
        window->resize(1400, 900);
        window->show();
        window->OpenFile(file);
        QApplication::processEvents();
        window->Canvas().Refresh();
        window->repaint();
        window->setAttribute(Qt::WA_DeleteOnClose, false);
        delete window;
    });
}

void MeasureOpening() {
    std::string name = (std::filesystem::temp_directory_path() / "oxc-bench-XXXXXX").string();
    const std::filesystem::path folder = mkdtemp(name.data());
    setenv("XDG_STATE_HOME", folder.c_str(), 1);
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    std::ofstream(folder / "report.rdl") << Report();
    std::vector<double> times;
    for (int round = 0; round < 5; ++round) {
        times.push_back(OpeningOf(folder / "report.rdl"));
    }
    Say("opening a window", times);
    std::filesystem::remove_all(folder);
}

// Returns the text boxes of the model.
std::vector<designer::ElementId> BoxesOf(const designer::DesignModel& model) {
    std::vector<designer::ElementId> all;
    for (const designer::ReportItem& item : model.Items().items) {
        all.push_back(item.id);
    }
    return all;
}

void MeasureDrag(designer::DesignCanvas& canvas, designer::ElementId box) {
    std::vector<double> frames;
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
}

void MeasureCanvas(designer::DesignModel& model) {
    designer::DesignCanvas canvas(model);
    canvas.resize(1000, 800);
    canvas.show();
    std::printf("first picture: %.1f ms\n", MillisecondsOf([&] {
                    canvas.Refresh();
                    canvas.viewport()->repaint();
                }));
    const designer::ElementId box = model.Items().items.at(Columns + 2).id;
    std::vector<double> changes;
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
    MeasureDrag(canvas, box);
}

void MeasureAllItems(designer::DesignModel& model) {
    const std::vector<designer::ElementId> all = BoxesOf(model);
    const designer::ReportItems items = model.Items();
    std::printf("all items as a group: %.1f ms\n", MillisecondsOf([&] {
                    model.Edit("Group",
                               [&](designer::Document& document) { GroupItems(document, items, all); });
                }));
    model.Undo();
    std::printf("all items pasted: %.1f ms\n", MillisecondsOf([&] {
                    const auto copied = designer::ItemsIn(ItemsText(model.Source(), all));
                    model.Edit("Paste", [&](designer::Document& document) {
                        PasteItems(document, items.bands[0].element, *copied, 10);
                    });
                }));
    model.Undo();
    std::printf("all items moved: %.1f ms\n", MillisecondsOf([&] {
                    std::vector<designer::Placement> places;
                    for (const designer::ReportItem& item : items.items) {
                        places.push_back({item.id, item.place});
                        places.back().place.left += 1;
                    }
                    model.Edit("Move", [&](designer::Document& document) { Place(document, items, places); });
                }));
    std::printf("all items deleted: %.1f ms\n", MillisecondsOf([&] {
                    model.Edit("Delete", [&](designer::Document& document) { RemoveAll(document, all, {}); });
                }));
}

std::string LongTable() {
    std::string rows, members;
    for (int n = 0; n < 5000; ++n) {
        rows += "<TablixRow><Height>5mm</Height><TablixCells><TablixCell/></TablixCells></TablixRow>";
        members += "<TablixMember/>";
    }
    return "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition\">"
           "<ReportSections><ReportSection><Body><ReportItems><Tablix Name=\"T\"><TablixBody><TablixColumns>"
           "<TablixColumn><Width>2cm</Width></TablixColumn></TablixColumns><TablixRows>" +
           rows +
           "</TablixRows></TablixBody><TablixColumnHierarchy><TablixMembers><TablixMember/></TablixMembers>"
           "</TablixColumnHierarchy><TablixRowHierarchy><TablixMembers>" +
           members +
           "</TablixMembers></TablixRowHierarchy></Tablix></ReportItems><Height>1cm</Height></Body>"
           "<Width>10cm</Width><Page/></ReportSection></ReportSections></Report>";
}

void MeasureLongTable() {
    designer::DesignModel model{designer::Document(LongTable())};
    const designer::ElementId table = model.Items().items.at(0).id;
    std::printf("a column into a table of 5,000 rows: %.1f ms\n", MillisecondsOf([&] {
                    model.Edit("Add column", [&](designer::Document& document) {
                        AddTrack(document, table, designer::Axis::Columns, 0, designer::Side::After,
                                 designer::GroupSide::Inside);
                    });
                }));
}

}  // namespace

int main(int argc, char** argv) {
    if (!std::getenv("DISPLAY") && !std::getenv("QT_QPA_PLATFORM")) {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    const QApplication application(argc, argv);
    MeasureOpening();
    designer::DesignModel model{designer::Document(Report())};
    MeasureCanvas(model);
    MeasureAllItems(model);
    MeasureLongTable();
    return 0;
}
