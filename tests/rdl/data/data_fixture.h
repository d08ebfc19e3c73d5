// SPDX-License-Identifier: GPL-3.0-or-later
// A folder with data of its own, and a definition built by hand.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "rdl/data/load.h"

namespace rdl::data {

class DataFixture : public testing::Test {
 protected:
    DataFixture();
    ~DataFixture() override;

    void Execute(const std::string& sql);  // on sales.db, made when it is missing
    void Write(const std::string& name, const std::string& bytes);
    DataSource& AddSource(const std::string& provider, const std::string& connectString);
    // Fields "Name" or "Name:Type" of the columns of that name.
    DataSet& AddSet(const std::string& command, const std::vector<std::string>& fields);
    void AddParameter(const std::string& name, Value value);
    void AddCalculated(DataSet& set, const std::string& name, const std::string& expression);
    void AddFilter(DataSet& set, const std::string& expression, const std::string& op,
                   const std::vector<std::string>& values);

    Table Load();  // of the first data set
    // Every value as a text, fields by |, rows by a blank.
    std::string Rows();
    std::string Failure();
    // Ends the process with 0 and the failure on standard error, as no further file can be opened.
    [[noreturn]] void FailWithoutFiles();
    static Expr ExprOf(const std::string& text);

    std::filesystem::path folder;
    Definition definition;
    LoadRequest request;
};

}  // namespace rdl::data
