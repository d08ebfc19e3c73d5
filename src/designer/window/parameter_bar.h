// SPDX-License-Identifier: GPL-3.0-or-later
// The values of a report's parameters, above its preview.
#pragma once

#include <QHash>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "designer/model/asked_parameters.h"
#include "platform/contracts/report_engine.h"

class QCheckBox;
class QGridLayout;
class QPushButton;
class QScrollArea;

namespace designer {

class ParameterBar : public QWidget {
    Q_OBJECT
 public:
    explicit ParameterBar(QWidget* parent = nullptr);

    // Replaces the fields by those of the parameters. What was typed before stays with the name of its
    // parameter; the others show the defaults of `report`, which has all of the parameters. The bar is
    // hidden if nothing is asked.
    void Show(const std::vector<AskedParameter>& parameters, report::Report& report);
    // Whether every parameter has a value or a default.
    bool IsComplete() const;
    // Gives the values to the report; a field that is left empty leaves its parameter the default. Raises
    // RuntimeError 13, and moves the focus to the field, if a value does not fit.
    void GiveTo(report::Report& report) const;
    void FocusFirst() const;

 signals:
    void RunRequested();

 protected:
    void changeEvent(QEvent* event) override;

 private:
    // What a field has: texts of values. Nothing: Null.
    using Values = std::optional<QStringList>;
    struct Field {
        AskedParameter parameter;
        QWidget* editor = nullptr;
        QCheckBox* null = nullptr;  // only if the parameter may be Null
        std::function<QStringList()> read;
        std::function<void(const QStringList&)> write;
    };

    void AddField(const AskedParameter& parameter, const report::ParameterField& given);
    Field MakeEditor(const AskedParameter& parameter);
    Field MakeBox(const AskedParameter& parameter);    // one of several values
    Field MakeList(const AskedParameter& parameter);   // any of several values
    Field MakeLines(const AskedParameter& parameter);  // several values, one a line
    Field MakeLine(const AskedParameter& parameter);   // any value
    static Values ValuesOf(const Field& field);
    void KeepTyped();
    void FitHeight();

    QScrollArea* m_scroll;
    QPushButton* m_run;
    QWidget* m_page = nullptr;
    QGridLayout* m_grid = nullptr;
    std::vector<Field> m_fields;
    QHash<QString, Values> m_typed;  // by the name of the parameter
};

}  // namespace designer
