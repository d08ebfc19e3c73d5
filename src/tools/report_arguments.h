// The command line of oxc-report.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tools {

enum class Command { Help, Info, Export };

struct DataSourceArgument {
    std::string name, provider, connectString;
};

// Where the password that belongs to --user is read from.
enum class PasswordSource { Argument, StandardInput, Environment };

struct ReportArguments {
    Command command = Command::Help;
    std::string file;
    int format = 0;  // the report engine's code
    std::string output;
    std::vector<std::pair<std::string, std::string>> parameters;  // in the order given; a name may come again
    bool hasFormula = false;
    std::string formula;
    std::string user;
    PasswordSource passwordSource = PasswordSource::Environment;
    std::string password;  // when it is an argument
    std::vector<DataSourceArgument> dataSources;
};

// What was typed makes no sense; the text says what.
class UsageError : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

// The arguments without the program's name. Raises UsageError.
ReportArguments ParseArguments(const std::vector<std::string>& arguments);

extern const char* const Usage;

}  // namespace tools
