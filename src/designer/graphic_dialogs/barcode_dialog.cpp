// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphic_dialogs/barcode_dialog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QVBoxLayout>
#include <set>

#include "designer/graphic_dialogs/expression_field.h"
#include "designer/graphics/item_parts.h"
#include "rdl/api/symbologies.h"

namespace designer {
namespace {

// One word for each symbology that the engine draws.
QStringList Symbologies() {
    QStringList words;
    std::set<rdl::Symbology> known;
    for (const rdl::SymbologyRow& row : rdl::Symbologies) {
        if (known.insert(row.symbology).second) {
            words.append(QString::fromUtf8(row.name.data(), static_cast<qsizetype>(row.name.size())));
        }
    }
    return words;
}

}  // namespace

BarcodeDialog::BarcodeDialog(DesignModel& model, ElementId item, QWidget* parent)
    : ItemDialog(model, item, tr("Bar Code"), parent) {
    setObjectName("barcodeDialog");
    const BarcodeDesign design = ReadBarcodeDesign(model.Source(), item);
    m_symbology = AddList(tr("&Symbology:"), "symbology", Symbologies(), design.symbology);
    m_value = AddLine(
        tr("&Value:"), "barcodeValue", design.value,
        [](const Document& document, ElementId id) { return BarcodeValueOf(document, id); }, "Value");
    m_text = AddList(tr("&Text below:"), "showText", {"true", "false"}, design.showsText);
    m_correction = AddList(tr("&Error correction:"), "correction", {"L", "M", "Q", "H"}, design.correction);
    Below().addStretch(1);
}

// Each may be an expression.
QComboBox* BarcodeDialog::AddList(const QString& label, const char* name, const QStringList& words,
                                  const std::string& value) {
    auto* list = new QComboBox(this);
    list->setObjectName(name);
    list->setEditable(true);
    list->addItems(words);
    list->setEditText(QString::fromStdString(value));
    Form().addRow(label, list);
    return list;
}

void BarcodeDialog::Write(Document& document, ElementId item) const {
    const auto text = [](const QComboBox& list) { return list.currentText().trimmed().toStdString(); };
    const BarcodeDesign design{text(*m_symbology), m_value->Value(), text(*m_text), text(*m_correction)};
    if (design.value.empty()) {
        throw EditError("The bar code needs a value");
    }
    PutBarcodeDesign(document, item, design);
}

}  // namespace designer
