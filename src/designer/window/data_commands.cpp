// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DesignWindow: the commands on the data, the parameters and the page of the report.
#include <QAction>
#include <QMenu>

#include "designer/dialogs/data_source_dialog.h"
#include "designer/expressions/expression_check.h"
#include "designer/panes/data_pane.h"
#include "designer/report_dialogs/code_dialog.h"
#include "designer/report_dialogs/data_set_dialog.h"
#include "designer/report_dialogs/links_dialog.h"
#include "designer/report_dialogs/page_dialog.h"
#include "designer/report_dialogs/parameters_dialog.h"
#include "designer/report_dialogs/pictures_dialog.h"
#include "designer/window/design_window.h"

namespace designer {
namespace {

constexpr const char* Names[] = {"reportDataSource", "reportDataSet",  "reportParameters",
                                 "reportPage",       "reportPictures", "reportCode"};

}  // namespace

void DesignWindow::BuildDataCommands(QMenu& menu) {
    AddCommand(menu, "reportDataSource", tr("Data &Source..."), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_S),
               [this] {
                   FinishTyping();
                   DataSourceDialog(*m_model, this).exec();
               });
    AddCommand(menu, "reportDataSet", tr("&Data Set..."), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_D),
               [this] {
                   FinishTyping();
                   DataSetDialog(*m_model, this).exec();
               });
    AddCommand(menu, "reportParameters", tr("&Parameters..."), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_P),
               [this] {
                   FinishTyping();
                   ParametersDialog(*m_model, this).exec();
               });
    menu.addSeparator();
    AddCommand(menu, "reportPage", tr("Pa&ge Set-up..."), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P),
               [this] {
                   FinishTyping();
                   PageDialog(*m_model, this).exec();
               });
    AddCommand(menu, "reportPictures", tr("Embedded P&ictures..."),
               QKeySequence(Qt::CTRL | Qt::ALT | Qt::SHIFT | Qt::Key_I),
               [this] { OpenPart(DataPart::Image, {}); });
    AddCommand(menu, "reportCode", tr("&Code..."), QKeySequence(Qt::CTRL | Qt::ALT | Qt::SHIFT | Qt::Key_C),
               [this] {
                   FinishTyping();
                   CodeDialog(*m_model, this).exec();
               });
    menu.addSeparator();
    AddCommand(menu, "itemLinks", tr("&Link and Document Map..."), QKeySequence(Qt::CTRL | Qt::Key_K),
               [this] {
                   m_canvas->TakeTextPart();
                   FinishTyping();
                   if (const auto ids = LinkedElements(); !ids.empty()) {
                       LinksDialog(*m_model, ids, this).exec();
                   }
                   m_canvas->ContinueText();
               });
    m_canvas->addAction(findChild<QAction*>("itemLinks"));
    connect(m_data, &DataPane::OpenRequested, this, &DesignWindow::OpenPart);
    connect(m_data, &DataPane::RemoveRequested, this, &DesignWindow::RemoveDataPart);
}

std::vector<ElementId> DesignWindow::LinkedElements() const {
    if (m_model->Item(m_model->Leader())) {
        return {m_model->Leader()};
    }
    std::vector<ElementId> runs;
    for (const ElementId id : m_model->Selection()) {
        if (m_model->Source().Has(id) && m_model->Source().Name(id) == "TextRun") {
            runs.push_back(id);
        }
    }
    return runs;
}

void DesignWindow::ShowDataCommands(const QString& off) {
    for (const char* name : Names) {
        Allow(name, off);
    }
    const bool isLinked = !LinkedElements().empty();
    Allow("itemLinks", !off.isEmpty() ? off : isLinked ? QString() : tr("Select an item"));
}

void DesignWindow::OpenPart(DataPart part, const std::string& name) {
    FinishTyping();
    switch (part) {
        case DataPart::Source: {
            DataSourceDialog dialog(*m_model, this);
            dialog.Choose(name);
            dialog.exec();
            break;
        }
        case DataPart::Set: {
            DataSetDialog dialog(*m_model, this);
            dialog.Choose(name);
            dialog.exec();
            break;
        }
        case DataPart::Parameter: {
            ParametersDialog dialog(*m_model, this);
            dialog.Choose(name);
            dialog.exec();
            break;
        }
        case DataPart::Image:
            PicturesDialog(*m_model, name, this).exec();
            break;
    }
}

// What names the part in another way than by a reference, such as a field of its rows, is found by the
// engine.
void DesignWindow::RemoveDataPart(DataPart part, const std::string& name) {
    FinishTyping();
    m_model->Edit(tr("Remove %1").arg(QString::fromStdString(name)), [&](Document& document) {
        const bool worked = FaultOfReport(*m_model, document).empty();
        RemovePart(document, part, name);
        const std::string fault = worked ? FaultOfReport(*m_model, document) : std::string();
        if (!fault.empty()) {
            throw EditError(name + " is used and stays. " + fault);
        }
    });
}

}  // namespace designer
