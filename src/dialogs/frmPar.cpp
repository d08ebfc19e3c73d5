// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/frmPar.h"

#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QStyle>
#include <algorithm>

#include "dialogs/ModalForm.h"
#include "dialogs/ValueReading.h"
#include "execution/RunReport.h"
#include "platform/base/convert.h"
#include "platform/base/marks.h"
#include "platform/contracts/adodb.h"
#include "platform/contracts/loop.h"
#include "platform/contracts/prompts.h"
#include "platform/controls/combo_box.h"
#include "platform/controls/items/list_view.h"
#include "platform/controls/kit/twips.h"
#include "shared/Global.h"
#include "ui_frmPar.h"

namespace {

constexpr int ComboTop = 480, RowHeight = 780, ComboWidth = 3855, BelowLastCombo = 960;  // twips

// Values of ParCaller.
constexpr const char *Wizard = "frmAddReport", *Properties = "frmPar", *PackageWizard = "frmWiz",
                     *PackageReport = "frmViewer";

bool FillsList() {
    return Global::ParCaller == Properties || Global::ParCaller == Wizard;
}

void InsertWaitingRow(const std::string& name, const std::string& value) {
    ADODB::Connection connection;
    connection.Open(Global::ConnectionString);
    connection.Execute("insert into tmpPar(rptName, parName, parValue) values('" + Global::ParReportName +
                       "','" + name + "','" + value + "')");
    connection.Close();
}

// Raises 91 for a box or a list that does not exist: another report may be open by now.
template <typename Control>
Control& Shown(Control* control) {
    if (control == nullptr) {
        throw RuntimeError(err::ObjectNotSet);
    }
    return *control;
}

std::string& Slot(std::vector<std::string>& list, int index) {
    if (index < 1 || index >= static_cast<int>(list.size())) {
        throw RuntimeError(err::SubscriptOutOfRange);
    }
    return list[static_cast<std::size_t>(index)];
}

}  // namespace

void frmPar::ShowModal(ListView* lsvPar) {
    frmPar form(lsvPar, OwnerWindow());
    if (LoadForm([&form] { form.Form_Load(); })) {
        form.exec();
    }
}

frmPar::frmPar(ListView* lsvPar, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmPar>()), m_lsvPar(lsvPar) {
    m_ui->setupUi(this);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frmPar::cmdOK_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmPar::cmdCancel_Click);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget* /*old*/, QWidget* now) { KeepScrolledTo(now); });
}

// The boxes lose the focus while the dialog is taken apart.
frmPar::~frmPar() {
    qApp->disconnect(this);
}

void frmPar::Form_Load() {
    DoEvents();
    const int count = Global::OpenedReport().ParameterFieldCount();
    for (int i = 1; i <= count; ++i) {
        // Every pass clears the list again, so that values set by the caller are lost before they are read
        // (sic).
        Global::ParNames.assign(static_cast<std::size_t>(count) + 1, {});
        Global::ParValues.assign(static_cast<std::size_t>(count) + 1, {});
        report::ParameterField& parameter = Global::OpenedReport().Parameter(i);
        ComboBox& combo = AddCombo(parameter.Name(), i);
        ComboSlot(i) = &combo;
        AddLabel(parameter.Name(), i);
        FillCombo(parameter, i);
    }
    if (count > 0) {
        ComboSlot(1)->setFocus();  // Tab goes from the last box to the buttons
    }
    FitSize(count);
}

ComboBox& frmPar::AddCombo(const std::string& parameter, int row) {
    const QString name = QString::fromStdString("cmb" + Replace(parameter, " ", ""));
    for (const QWidget* control : m_ui->rows->findChildren<QWidget*>()) {
        if (control->objectName().compare(name, Qt::CaseInsensitive) == 0) {
            constexpr std::int32_t NameTaken = 727;
            throw RuntimeError(NameTaken,
                               "There is already a control with the name \"" + name.toStdString() + "\"");
        }
    }
    auto* combo = new ComboBox(m_ui->rows);
    combo->setObjectName(name);
    combo->setEditable(true);
    combo->setMinimumWidth(Pixels(ComboWidth));
    // A large font makes the boxes wider, a long default value does not.
    constexpr int Characters = 20;
    combo->setMinimumContentsLength(Characters);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setAccessibleName(QString::fromStdString(parameter));
    m_ui->grid->addWidget(combo, 2 * row - 1, 0);
    return *combo;
}

// Shows a caption unchanged: a parameter's name has no markup and no mnemonic.
void frmPar::AddLabel(const std::string& caption, int row) {
    auto* label = new QLabel(m_ui->rows);
    label->setObjectName("iLabel" + QString::number(row));
    label->setTextFormat(Qt::PlainText);
    label->setText(QString::fromStdString(caption));
    constexpr int Apart = 6;  // from the box above, which belongs to another parameter
    label->setContentsMargins(0, row > 1 ? Apart : 0, 0, 0);
    m_ui->grid->addWidget(label, 2 * row - 2, 0);
}

ComboBox*& frmPar::ComboSlot(int index) {
    if (index < 0 || index >= static_cast<int>(cmb.size())) {
        throw RuntimeError(err::SubscriptOutOfRange);
    }
    return cmb[static_cast<std::size_t>(index)];
}

void frmPar::FillCombo(report::ParameterField& parameter, int index) {
    ComboBox& combo = *ComboSlot(index);
    if (const std::string prompt = parameter.Prompt(); !prompt.empty()) {
        combo.setToolTip("<qt>" + QString::fromStdString(prompt).toHtmlEscaped());
    }
    const std::vector<std::string> defaults = parameter.DefaultValues();
    for (const std::string& value : defaults) {
        combo.AddItem(value);
    }
    for (const std::string& value : parameter.ValidValues()) {
        if (std::find(defaults.begin(), defaults.end(), value) == defaults.end()) {
            combo.AddItem(value);
        }
    }
    if (!defaults.empty()) {
        combo.ListIndex(0);  // sets the index too, so that the arrow keys start there
    }
    if (Global::ParCaller == PackageReport) {
        combo.ListIndex(-1);
        combo.Text(Global::ParValueSlot(index));
    } else if (Global::ParCaller == PackageWizard) {
        HideCancel();
    }
    ShowReading(parameter, index);
}

// A date in digits is a different day in another region: the user sees that here and not at the run.
void frmPar::ShowReading(const report::ParameterField& parameter, int index) {
    const int valueType = parameter.ValueType();
    if (valueType != report::NumberField && valueType != report::DateTimeField) {
        return;
    }
    auto* reading = new QLabel(m_ui->rows);
    reading->setObjectName("iReading" + QString::number(index));
    reading->setTextFormat(Qt::PlainText);
    reading->setMinimumWidth(fontMetrics().horizontalAdvance("30 September 2000, 00:00:00"));
    m_ui->grid->addWidget(reading, 2 * index - 1, 1);
    ComboBox& combo = *ComboSlot(index);
    const auto show = [reading, valueType,
                       numbers = parameter.IsWholeNumber() ? Numbers::Whole : Numbers::Any, &combo] {
        const QString text = QString::fromStdString(ReadingOf(valueType, combo.Text(), numbers));
        reading->setText(text);
        combo.setAccessibleDescription(text);
    };
    connect(&combo, &QComboBox::editTextChanged, reading, show);
    show();
}

void frmPar::HideCancel() {
    m_ui->cmdCancel->hide();
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
}

// As high as the boxes need; a dialog higher than the screen scrolls.
void frmPar::FitSize(int count) {
    const int lastTop = ComboTop + (count > 1 ? (count - 1) * RowHeight : 0);
    const QSize boxes = m_ui->rows->sizeHint();
    const QSize around = sizeHint() - m_ui->scroll->sizeHint();
    const int height = std::max(Pixels(lastTop + BelowLastCombo), boxes.height() + around.height());
    const QSize room = screen()->availableSize() * 9 / 10;
    const int bar = height > room.height() ? style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0;
    resize(QSize(boxes.width() + around.width() + bar, height).boundedTo(room));
}

void frmPar::KeepScrolledTo(QWidget* control) {
    if (control != nullptr && m_ui->rows->isAncestorOf(control)) {
        m_ui->scroll->ensureWidgetVisible(control);
    }
}

void frmPar::cmdOK_Click() {
    Global::ClearReportParameters();
    const int count = Global::OpenedReport().ParameterFieldCount();
    for (int i = 1; i <= count; ++i) {
        if (!TakeValue(i)) {
            GiveUp(count);
            return;
        }
    }
    if (FillsList()) {
        Shown(m_lsvPar).ListItems().Clear();
    }
    for (int i = 1; i <= count; ++i) {
        HandOn(i);
    }
    accept();
}

// The report gets the text unchanged; statements get it without '. Returns false after a box about a value
// that the report cannot take.
bool frmPar::TakeValue(int index) {
    report::Report& report = Global::OpenedReport();
    const std::string text = Shown(ComboSlot(index)).Text();
    report::ParameterField& parameter = report.Parameter(index);
    Slot(Global::ParNames, index) = parameter.Name();
    Slot(Global::ParValues, index) = WithoutMark(text);
    try {
        Global::HandOverParameter(report, index, text, Global::OtherFieldRule::HandOver);
        return true;
    } catch (const RuntimeError& error) {
        MsgBox(ValueRefusal(parameter, text, error), vbExclamation);
        return false;
    }
}

// Clears all values: the caller would store an incomplete set that fails at every run.
void frmPar::GiveUp(int count) {
    Global::ParNames.assign(static_cast<std::size_t>(count) + 1, {});
    Global::ParValues.assign(static_cast<std::size_t>(count) + 1, {});
    Global::ParCancelled = true;
    QDialog::reject();
}

void frmPar::HandOn(int index) {
    const std::string& name = Slot(Global::ParNames, index);
    const std::string& value = Slot(Global::ParValues, index);
    if (FillsList()) {
        Shown(m_lsvPar).ListItems().Add(name + std::to_string(index), name).SubItems(1, value);
    } else if (Global::ParCaller == PackageWizard) {
        InsertWaitingRow(name, value);
    }
}

void frmPar::cmdCancel_Click() {
    Global::ParCancelled = true;
    QDialog::reject();
}

// Without a Cancel button, closing the dialog would leave the package's report without values.
void frmPar::reject() {
    if (!m_ui->cmdCancel->isHidden()) {
        cmdCancel_Click();
    }
}
