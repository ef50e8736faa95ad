#include "Hosts/Linux/Apps/ExecLine.h"

#include "Core/Support/Text.h"

#include <algorithm>

namespace pacelet::Linux {

namespace {

/// One word off the front of `rest`, which does not begin with a blank.
std::string takeWord(std::string_view& rest) {
    std::string word;
    bool isQuoted = false;
    std::size_t at = 0;
    for (; at < rest.size() && (isQuoted || (rest[at] != ' ' && rest[at] != '\t')); ++at) {
        if (rest[at] == '"') {
            isQuoted = !isQuoted;
        } else if (isQuoted && rest[at] == '\\' && at + 1 < rest.size()) {
            word += rest[++at];
        } else {
            word += rest[at];
        }
    }
    rest.remove_prefix(at);
    return word;
}

bool isFieldCode(const std::string& word) {
    return word.size() == 2 && word[0] == '%' && word[1] != '%';
}

bool isAssignment(const std::string& word) {
    const std::size_t equals = word.find('=');
    return equals != std::string::npos && word.find('/') > equals;
}

} // namespace

std::vector<std::string> splitExecLine(std::string_view exec) {
    std::vector<std::string> words;
    for (;;) {
        const std::size_t begin = exec.find_first_not_of(" \t");
        if (begin == std::string_view::npos) {
            return words;
        }
        exec.remove_prefix(begin);
        if (std::string word = takeWord(exec); !isFieldCode(word)) {
            words.push_back(std::move(word));
        }
    }
}

std::vector<std::string> execCommand(std::string_view exec) {
    std::vector<std::string> words = splitExecLine(exec);
    if (words.empty() || lastPathComponent(words.front()) != "env") {
        return words;
    }
    words.erase(words.begin(), std::find_if_not(words.begin() + 1, words.end(), isAssignment));
    return words;
}

} // namespace pacelet::Linux
