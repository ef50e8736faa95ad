#include "Hosts/Linux/LinuxToolRunner.h"

#include <system_error>
#include <utility>

namespace pacelet::Linux {

void LinuxToolRunner::answer(std::string executable, Answerer answerer) {
    answerers_.insert_or_assign(std::move(executable), std::move(answerer));
}

Shell::Output LinuxToolRunner::run(const std::string& executable,
                                   const std::vector<std::string>& arguments) {
    const auto answerer = answerers_.find(executable);
    if (answerer == answerers_.end()) {
        throw LaunchError{executable, std::make_error_code(std::errc::no_such_file_or_directory)};
    }
    return answerer->second(arguments);
}

} // namespace pacelet::Linux
