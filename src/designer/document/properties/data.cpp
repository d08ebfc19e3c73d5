// SPDX-License-Identifier: GPL-3.0-or-later
// Of data sources, data sets, parameters and embedded pictures.
#include "designer/document/properties/property_table.h"

namespace designer {
namespace {

using enum PropertyKind;
constexpr auto Allowed = Expressions::Allowed;
constexpr auto No = Expressions::No;

constexpr Property Named[] = {{"Name", "General", "@Name", Name}};

constexpr Property OfSources[] = {
    {"Provider", "General", "ConnectionProperties/DataProvider", Text},
    {"Connect string", "General", "ConnectionProperties/ConnectString", Text, Allowed},
    {"Integrated security", "General", "ConnectionProperties/IntegratedSecurity", Boolean, No, "false"},
    {"Shared data source", "General", "DataSourceReference", Text},
};

constexpr Property OfSets[] = {
    {"Data source", "Query", "Query/DataSourceName", DataSource},
    {"Query type", "Query", "Query/CommandType", Words, No, "Text", "Text StoredProcedure TableDirect"},
    {"Query", "Query", "Query/CommandText", Text, Allowed},
    {"Time limit in seconds", "Query", "Query/Timeout", Integer, No, "0"},
    {"Shared data set", "Query", "SharedDataSet/SharedDataSetReference", Text},
    {"Case sensitivity", "Comparison", "CaseSensitivity", Words, No, "Auto", "True False Auto"},
};

constexpr Property OfFields[] = {
    {"Column", "General", "DataField", Text},
    {"Value", "General", "Value", Text, Allowed},
    {"Type", "General", "rd:TypeName", Text},
};

constexpr Property OfRows[] = {{"File", "General", "@File", Text}};

// The name is that of the query: "@Year".
constexpr Property OfQueryParameters[] = {
    {"Name", "General", "@Name", Text},
    {"Value", "General", "Value", Text, Allowed},
};

constexpr Property OfParameters[] = {
    {"Type", "General", "DataType", Words, No, "String", "String Boolean DateTime Integer Float"},
    {"Prompt", "General", "Prompt", Text, Allowed},
    {"May be null", "Values", "Nullable", Boolean, No, "false"},
    {"May be empty", "Values", "AllowBlank", Boolean, No, "false"},
    {"Several values", "Values", "MultiValue", Boolean, No, "false", "", "MultiValue"},
    {"Hidden", "General", "Hidden", Boolean, No, "false", "", "Hidden"},
    {"Default value", "Values", "DefaultValue/Values/Value", Text, Allowed},
    {"Data set of the default", "Values", "DefaultValue/DataSetReference/DataSetName", DataSet},
    {"Field of the default", "Values", "DefaultValue/DataSetReference/ValueField", Text},
    {"Data set of valid values", "Values", "ValidValues/DataSetReference/DataSetName", DataSet},
    {"Field of valid values", "Values", "ValidValues/DataSetReference/ValueField", Text},
    {"Field of labels", "Values", "ValidValues/DataSetReference/LabelField", Text},
};

constexpr Property OfParameterValues[] = {
    {"Value", "General", "Value", Text, Allowed},
    {"Label", "General", "Label", Text, Allowed},
};

constexpr Property OfPictures[] = {{"Picture type", "General", "MIMEType", Text}};

constexpr PropertyGroup Groups[] = {
    {"DataSource DataSet Field ReportParameter EmbeddedImage", Named},
    {"DataSource", OfSources},
    {"DataSet", OfSets},
    {"Field", OfFields},
    {"Rows", OfRows},
    {"QueryParameter", OfQueryParameters},
    {"ReportParameter", OfParameters},
    {"ParameterValue", OfParameterValues},
    {"EmbeddedImage", OfPictures},
};

}  // namespace

std::span<const PropertyGroup> DataProperties() {
    return Groups;
}

}  // namespace designer
