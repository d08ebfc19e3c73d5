// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/report_dialogs/links_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "designer/dialogs/form_row.h"
#include "designer/dialogs/note.h"
#include "designer/document/properties/properties.h"
#include "designer/expressions/row_table.h"
#include "platform/base/ascii.h"
#include "rdl/api/identifier.h"

namespace designer {
namespace {

// For another element, which has none of the parameters yet.
ItemLinks CopyOf(ItemLinks links) {
    for (LinkParameter& parameter : links.parameters) {
        parameter.place = NewRow;
    }
    return links;
}

}  // namespace

LinksDialog::LinksDialog(DesignModel& model, std::vector<ElementId> ids, QWidget* parent)
    : QDialog(parent),
      m_model(model),
      m_ids(std::move(ids)),
      m_item(m_ids.back()),
      m_old(LinksOf(model.Source(), m_item)),
      m_kind(new QComboBox(this)),
      m_form(new QFormLayout) {
    setObjectName("linksDialog");
    setWindowTitle(tr("Link and Document Map"));
    m_kind->setObjectName("kind");
    m_kind->addItems(
        {tr("Nothing"), tr("Opens an address"), tr("Goes to a bookmark"), tr("Opens another report")});
    m_kind->setEnabled(Has("Link address"));
    m_form->addRow(tr("A &click on it:"), m_kind);
    m_target = AddLine(*m_form, "target", tr("&Where to:"), &ItemLinks::target, {});
    BuildParameters();
    m_label = AddLine(*m_form, "label", tr("Label in the &document map:"), &ItemLinks::label,
                      tr("Entry in the outline of a PDF"));
    m_toolTip = AddLine(*m_form, "toolTip", tr("&Tool tip:"), &ItemLinks::toolTip, {});
    m_bookmark = AddLine(*m_form, "bookmark", tr("&Bookmark here:"), &ItemLinks::bookmark,
                         tr("A name that links go to"));
    m_form->setRowVisible(m_label, Has("Document map label"));
    m_form->setRowVisible(m_bookmark, Has("Bookmark"));
    m_note = new Note(m_target->Line(), this);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &LinksDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &LinksDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(m_form, 1);
    layout->addWidget(m_note);
    layout->addWidget(buttons);
    m_kind->setCurrentIndex(static_cast<int>(m_old.kind));
    connect(m_kind, &QComboBox::currentIndexChanged, this, [this] {
        m_note->Clear();
        ShowKind();
    });
    ShowKind();
    resize(fontMetrics().averageCharWidth() * 80, sizeHint().height());
}

bool LinksDialog::Has(std::string_view property) const {
    const auto properties = PropertiesOf(m_model.Source(), m_item);
    return std::any_of(properties.begin(), properties.end(),
                       [property](const Property* one) { return one->name == property; });
}

ExpressionLine* LinksDialog::AddLine(QFormLayout& form, const char* name, const QString& label,
                                     std::string ItemLinks::*member, const QString& hint) {
    auto* line = new ExpressionLine(
        m_model, name, QString(label).remove('&').remove(':'),
        [this, member](Document& copy, const std::string& value) {
            ItemLinks links = Typed();
            links.*member = value;
            PutTrial(copy, links);
        },
        this);
    line->SetText(m_old.*member);
    line->Line().setPlaceholderText(hint);
    AddFieldRow(form, label, line);
    connect(line, &ExpressionLine::Edited, this, [this] { m_note->Clear(); });
    return line;
}

void LinksDialog::BuildParameters() {
    m_reportPart = new QWidget(this);
    m_parameters = new RowTable(
        m_model, "linkParameters", tr("Parameters of the report"),
        {{.title = tr("Parameter")}, {.title = tr("Value"), .takesExpressions = true}},
        [this](Document& copy, const std::vector<RowTable::Row>& rows) {
            ItemLinks links = m_old;
            links.kind = LinkKind::Report;
            links.parameters.clear();
            for (const RowTable::Row& row : rows) {
                links.parameters.push_back({row.place, row.cells[0], row.cells[1]});
            }
            PutTrial(copy, links);
        },
        m_reportPart);
    auto* help = new QLabel(
        tr("The file keeps this link; documents that are made of the report do not have it."), m_reportPart);
    help->setWordWrap(true);
    auto* layout = new QVBoxLayout(m_reportPart);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_parameters, 1);
    layout->addWidget(help);
    m_form->addRow(tr("&Parameters:"), m_reportPart);
    static_cast<QLabel*>(m_form->labelForField(m_reportPart))->setBuddy(&m_parameters->Table());
    std::vector<RowTable::Row> rows;
    for (const LinkParameter& parameter : m_old.parameters) {
        rows.push_back({parameter.place, {parameter.name, parameter.value}});
    }
    m_parameters->SetRows(std::move(rows));
    connect(m_parameters, &RowTable::Edited, this, [this] { m_note->Clear(); });
}

void LinksDialog::ShowKind() {
    const auto kind = static_cast<LinkKind>(m_kind->currentIndex());
    m_form->setRowVisible(m_target, kind != LinkKind::None);
    m_form->setRowVisible(m_reportPart, kind == LinkKind::Report);
    m_target->Line().setPlaceholderText(kind == LinkKind::Address    ? "https://example.com"
                                        : kind == LinkKind::Bookmark ? tr("The bookmark of an item")
                                                                     : tr("The name of a report"));
}

ItemLinks LinksDialog::Typed() {
    ItemLinks links{.kind = static_cast<LinkKind>(m_kind->currentIndex()),
                    .target = m_target->Text(),
                    .label = m_label->Text(),
                    .toolTip = m_toolTip->Text(),
                    .bookmark = m_bookmark->Text()};
    for (const RowTable::Row& row : m_parameters->Rows()) {
        links.parameters.push_back({row.place, row.cells[0], row.cells[1]});
    }
    return links;
}

void LinksDialog::PutTrial(Document& copy, const ItemLinks& links) const {
    PutLinks(copy, copy.IdAt(m_model.Source().IndexOf(m_item)), links);
}

bool LinksDialog::Complain(QWidget& control, const QString& text) {
    m_note->ShowFault(text);
    control.setFocus();
    return false;
}

bool LinksDialog::IsComplete(const ItemLinks& links) {
    if (links.kind != LinkKind::None && Trim(links.target).empty()) {
        return Complain(m_target->Line(),
                        tr("Type where the link leads to, or pick \"%1\"").arg(m_kind->itemText(0)));
    }
    for (std::size_t row = 0; links.kind == LinkKind::Report && row < links.parameters.size(); ++row) {
        const std::string& name = links.parameters[row].name;
        if (!rdl::IsIdentifier(name)) {
            m_parameters->ShowCell(row, 0);
            return Complain(m_parameters->Table(),
                            tr("\"%1\" is no name of a parameter").arg(QString::fromStdString(name)));
        }
    }
    return true;
}

void LinksDialog::accept() {
    const ItemLinks links = Typed();
    if (links == m_old) {
        QDialog::accept();
        return;
    }
    if (!IsComplete(links)) {
        return;
    }
    const std::string fault = FaultOfEdit(m_model, [&](Document& copy) { PutTrial(copy, links); });
    if (!fault.empty()) {
        m_note->ShowFault(QString::fromStdString(fault));
    } else if (m_model.Edit(StepName(m_model, tr("Change Link of"), m_ids), [&](Document& document) {
                   for (const ElementId id : m_ids) {
                       PutLinks(document, id, id == m_item ? links : CopyOf(links));
                   }
               })) {
        QDialog::accept();
    }
}

}  // namespace designer
