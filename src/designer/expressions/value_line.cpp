// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/expressions/value_line.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "designer/dialogs/row_text.h"
#include "designer/tables/fields.h"
#include "platform/base/text.h"

namespace designer {
namespace {

constexpr int MomentBeforeWait = 300;       // milliseconds
constexpr std::size_t MostValueText = 400;  // bytes

// A value that no report has, to find where it is written.
constexpr std::string_view PlaceMark = "=ThePlaceOfThisValue";

bool IsIn(const Document& document, ElementId id, std::string_view name) {
    for (; id != NoElement; id = document.Parent(id)) {
        if (document.Name(id) == name) {
            return true;
        }
    }
    return false;
}

// In a data set only fields and filters are computed for a row.
ValuePlace PlaceInData(const Document& document, ElementId id) {
    ValuePlace place{.dataSet = {}, .isOfData = true};
    const bool isOfRow = IsIn(document, id, "Fields") || IsIn(document, id, "Filters");
    for (; isOfRow && id != NoElement; id = document.Parent(id)) {
        if (document.Name(id) == "DataSet") {
            place.dataSet = document.Attribute(id, "Name").value_or("");
        }
    }
    return place;
}

std::string OneLine(const std::string& text) {
    std::string line(CutText(text, MostValueText));
    for (char& c : line) {
        c = c == '\n' || c == '\r' || c == '\t' ? ' ' : c;
    }
    return line.size() < text.size() ? line + "..." : line;
}

QString TextOfList(const rdl::ValueList& values) {
    std::string text;
    for (const rdl::Value& one : values) {
        text += (text.empty() ? "" : "; ") + TextOf(one);
        if (text.size() > MostValueText) {
            break;
        }
    }
    return QString::fromStdString(OneLine(text));
}

// A text is in quotes: it may be blank.
QString TextWithType(const rdl::Value& value) {
    const auto typed = [&](const QString& text) {
        return QString("%1 (%2)").arg(text, QString::fromUtf8(WordOf(value.kind())));
    };
    switch (value.kind()) {
        case rdl::Kind::Null:
            return ValueLine::tr("Null");
        case rdl::Kind::Error:
            return ValueLine::tr("#Error: %1").arg(QString::fromStdString(std::string(value.AsText())));
        case rdl::Kind::List:
            return ValueLine::tr("%1 (Several values)").arg(TextOfList(value.AsList()));
        case rdl::Kind::Bytes:
            return typed(QString::number(value.AsText().size()));
        case rdl::Kind::Text:
            return typed('"' + QString::fromStdString(OneLine(TextOf(value))) + '"');
        default:
            return typed(QString::fromStdString(OneLine(TextOf(value))));
    }
}

}  // namespace

ValuePlace PlaceOf(const DesignModel& model, const ExpressionCheck::Write& write) {
    try {
        Document copy = model.Source().Copy();
        write(copy, std::string(PlaceMark));
        const std::size_t found = copy.Text().find(PlaceMark);
        const ElementId id = found == std::string::npos ? NoElement : copy.IdAt(copy.Tree().ElementAt(found));
        for (const char* part : {"DataSources", "DataSets", "ReportParameters"}) {
            if (id != NoElement && IsIn(copy, id, part)) {
                return PlaceInData(copy, id);
            }
        }
        return {.dataSet = id == NoElement ? std::string() : DataSetOfRegion(copy, id)};
    } catch (const EditError&) {
        return {};
    }
}

QString ShownValue(const rdl::ExpressionValue& value, const std::string& dataSet) {
    if (value.needsRun) {
        return ValueLine::tr("Known in the preview only: pages, other text boxes or groups decide it");
    }
    const QString set = QString::fromStdString(dataSet);
    QString text = TextWithType(value.value);
    if (value.isOfRows && value.rows == 0) {
        text += ValueLine::tr("; %1 has no rows").arg(set);
    } else if (value.isOfRows) {
        text += ValueLine::tr("; first row of %1, totals of all its rows (%2)").arg(set).arg(value.rows);
    }
    return text;
}

ValueLine::ValueLine(const DesignModel& model, ExpressionCheck::Write write, QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_write(std::move(write)),
      m_place(PlaceOf(model, m_write)),
      m_run(model),
      m_label(new QLabel(this)),
      m_button(new QPushButton(this)) {
    m_label->setObjectName("value");
    m_label->setAccessibleName(tr("Value of the expression"));
    m_label->setWordWrap(true);
    m_label->setTextFormat(Qt::PlainText);
    m_label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_label->setMinimumHeight(fontMetrics().lineSpacing() * 2);
    m_label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_button->setObjectName("compute");
    m_button->setAutoDefault(false);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_label, 1);
    layout->addWidget(m_button, 0, Qt::AlignTop);
    m_moment.setSingleShot(true);
    m_moment.setInterval(MomentBeforeWait);
    connect(&m_moment, &QTimer::timeout, this, &ValueLine::ShowWait);
    connect(m_button, &QPushButton::clicked, this, &ValueLine::Press);
    connect(&m_run, &ValueRun::Done, this, &ValueLine::ShowOutcome);
    connect(&m_run, &ValueRun::Stopped, this, &ValueLine::ShowStopped);
    Clear();
}

void ValueLine::ShowText(const QString& text) {
    m_moment.stop();
    m_label->setEnabled(true);
    m_label->setText(text);
    m_button->setText(tr("Com&pute"));
    m_button->setToolTip(tr("Reads the rows again"));
    m_button->setEnabled(!m_expression.empty());
}

void ValueLine::Clear() {
    m_run.Stop();
    m_expression.clear();
    ShowText({});
}

void ValueLine::Compute(const std::string& expression) {
    if (expression == m_expression) {
        return;
    }
    m_expression = expression;
    if (m_isAsked) {
        ShowText({});
    } else {
        Start();
    }
}

// What the rows do not depend on is computed with the rows that were read for the value before: the report is
// then the same, whatever is typed.
void ValueLine::Start() {
    try {
        Document copy = m_model.Source().Copy();
        m_write(copy, m_place.isOfData ? m_expression : "=Nothing");
        m_label->setEnabled(false);  // it is of what was typed before
        m_button->setEnabled(true);
        m_moment.start();
        m_run.Start({copy.Bytes(), m_expression, m_place.dataSet});
    } catch (const EditError& error) {
        ShowText(QString::fromUtf8(error.what()));
    } catch (const SourceFlaw& flaw) {
        ShowText(QString::fromUtf8(flaw.what()));
    }
}

void ValueLine::Press() {
    if (m_run.IsRunning()) {
        m_isAsked = true;
        m_run.Stop();
        m_button->setEnabled(false);
    } else {
        m_isAsked = false;
        m_run.ForgetRows();
        Start();
    }
}

void ValueLine::ShowWait() {
    m_label->setEnabled(true);
    m_label->setText(tr("The rows are read..."));
    m_button->setText(tr("Sto&p"));
    m_button->setToolTip({});
}

void ValueLine::ShowOutcome(const ValueOutcome& outcome) {
    ShowText(outcome.failure.empty() ? ShownValue(outcome.value, m_place.dataSet)
                                     : tr("No value: %1").arg(QString::fromStdString(outcome.failure)));
}

void ValueLine::ShowStopped(bool isTooLong) {
    if (!m_expression.empty()) {
        m_isAsked = true;
        ShowText(isTooLong ? tr("No value after two minutes") : tr("Stopped"));
    }
}

}  // namespace designer
