#pragma once
// The statements of a Maya ASCII file: words, quoted strings and the ';' that ends each
// statement, with the line every token starts on. Words and strings without escapes are
// views into the file's text; a string with escapes is unescaped into storage the reader
// keeps, so tokens of a million vertices cost no allocation each.

#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace host {

struct MaToken {
    std::string_view text;
    int line = 0;
    bool quoted = false;

    // A flag is an unquoted dash followed by a letter ("-type"); "-0.5" is a number.
    bool isFlag() const;
};

struct MaStatement {
    std::vector<MaToken> tokens; // the command name first; never empty
    int line = 0;                // the line of the command name
};

class MaReader {
public:
    explicit MaReader(std::string_view text) : fText(text) {}

    // The next statement; false at the end of the text or on an error (error() not empty),
    // such as a string left open or a statement the text ends inside.
    bool next(MaStatement& statement);
    const std::string& error() const { return fError; }

private:
    void skipBlanksAndComments();

    std::string_view fText;
    std::size_t fAt = 0;
    int fLine = 1;
    std::string fError;
    std::deque<std::string> fUnescaped;
};

} // namespace host
