#include "Hosts/Script/Syntax.h"

#include "Hosts/Script/ExpressionParser.h"
#include "Hosts/Script/TokenCursor.h"

#include <utility>

namespace pacelet::Script {

namespace {

/// Reads statements. Each ends with its line, but for the one behind "then" and "to".
class Parser {
public:
    explicit Parser(std::string_view script)
        : tokens_{script} {}

    Block script() {
        Block block;
        while (!tokens_.at(TokenKind::end)) {
            if (!tokens_.accept(TokenKind::lineEnd)) {
                block.push_back(line());
            }
        }
        return block;
    }

private:
    Statement line() {
        Statement read = statement();
        tokens_.lineEnd();
        return read;
    }

    Statement statement() {
        const TokenCursor::Nesting nesting{tokens_};
        Statement read;
        const std::size_t begin = tokens_.peek().range.begin;
        if (tokens_.acceptWord("set")) {
            read.form = set();
        } else if (tokens_.acceptWord("return")) {
            read.form = Return{expressions_.expression()};
        } else if (tokens_.acceptWord("tell")) {
            read.form = tell();
        } else if (tokens_.acceptWord("repeat")) {
            read.form = repeat();
        } else if (tokens_.acceptWord("if")) {
            read.form = condition();
        } else if (tokens_.acceptWord("do")) {
            read.form = shellScript();
        } else if (told_ && tokens_.at(TokenKind::event)) {
            read.form = SendEvent{tokens_.take().text};
        } else if (expressions_.knowsBrowser()) {
            browserCommand(read);
        } else {
            tokens_.fail("expression");
        }
        read.range = {begin, tokens_.endOfLast()};
        return read;
    }

    void browserCommand(Statement& read) {
        if (tokens_.acceptWord("close")) {
            read.form = Close{expressions_.expression()};
        } else if (tokens_.acceptWord("activate")) {
            read.form = Activate{};
        } else if (!tokens_.acceptWord("make")) {
            tokens_.fail("expression");
        } else if (tokens_.words({"new"}); tokens_.acceptWord("window")) {
            read.form = MakeWindow{};
        } else {
            read.form = makeTab();
        }
    }

    Set set() {
        std::string name = tokens_.variableName();
        tokens_.words({"to"});
        return {std::move(name), expressions_.expression()};
    }

    MakeTab makeTab() {
        tokens_.words({"tab", "at", "end", "of", "tabs", "of"});
        ExpressionPtr window = expressions_.reference();
        tokens_.words({"with", "properties"});
        tokens_.symbol("{");
        tokens_.words({"URL"});
        tokens_.symbol(":");
        ExpressionPtr url = expressions_.expression();
        tokens_.symbol("}");
        return {std::move(window), std::move(url)};
    }

    ShellScript shellScript() {
        tokens_.words({"shell", "script"});
        ShellScript script{expressions_.expression(), false};
        if (tokens_.acceptWord("with")) {
            tokens_.words({"administrator", "privileges"});
            script.asAdministrator = true;
        }
        return script;
    }

    If condition() {
        If read{expressions_.expression(), {}};
        tokens_.words({"then"});
        read.body.push_back(statement());
        return read;
    }

    Repeat repeat() {
        tokens_.words({"with"});
        Repeat read;
        read.variable = tokens_.variableName();
        tokens_.words({"in"});
        read.list = expressions_.expression();
        read.body = block("repeat");
        return read;
    }

    Tell tell() {
        tokens_.words({"application"});
        Tell read;
        read.byIdentifier = tokens_.acceptWord("id");
        read.application = tokens_.text();
        const bool toldBefore = std::exchange(told_, true);
        const bool browserBefore = expressions_.knowsBrowser();
        expressions_.setKnowsBrowser(read.byIdentifier);
        if (tokens_.acceptWord("to")) {
            read.body.push_back(statement());
        } else {
            read.body = block("tell");
        }
        told_ = toldBefore;
        expressions_.setKnowsBrowser(browserBefore);
        return read;
    }

    Block block(std::string_view what) {
        tokens_.lineEnd();
        Block body;
        while (!tokens_.atWord("end")) {
            if (tokens_.accept(TokenKind::lineEnd)) {
                continue;
            }
            if (tokens_.at(TokenKind::end)) {
                tokens_.fail("“end”");
            }
            body.push_back(line());
        }
        tokens_.words({"end"});
        if (!tokens_.at(TokenKind::lineEnd)) {
            tokens_.words({what});
        }
        return body;
    }

    TokenCursor tokens_;
    ExpressionParser expressions_{tokens_};
    bool told_ = false; ///< some application is addressed here
};

} // namespace

Block parse(std::string_view script) {
    return Parser{script}.script();
}

} // namespace pacelet::Script
