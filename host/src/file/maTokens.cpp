#include "file/maTokens.h"

#include <cctype>

namespace host {

bool MaToken::isFlag() const
{
    return !quoted && text.size() >= 2 && text[0] == '-' && std::isalpha(static_cast<unsigned char>(text[1]));
}

void MaReader::skipBlanksAndComments()
{
    while (fAt < fText.size()) {
        const char c = fText[fAt];
        if (c == '\n') {
            ++fLine;
            ++fAt;
        } else if (std::isspace(static_cast<unsigned char>(c))) {
            ++fAt;
        } else if (c == '/' && fAt + 1 < fText.size() && fText[fAt + 1] == '/') {
            while (fAt < fText.size() && fText[fAt] != '\n')
                ++fAt;
        } else if (c == '/' && fAt + 1 < fText.size() && fText[fAt + 1] == '*') {
            fAt += 2;
            while (fAt < fText.size() && !(fText[fAt] == '*' && fAt + 1 < fText.size() && fText[fAt + 1] == '/')) {
                fLine += fText[fAt] == '\n';
                ++fAt;
            }
            fAt = fAt < fText.size() ? fAt + 2 : fAt;
        } else {
            return;
        }
    }
}

bool MaReader::next(MaStatement& statement)
{
    statement.tokens.clear();
    statement.line = 0;
    for (;;) {
        skipBlanksAndComments();
        if (fAt >= fText.size()) {
            if (!statement.tokens.empty())
                fError = "line " + std::to_string(statement.line) +
                         ": the file ends inside this statement (no ';' closes it)";
            return false;
        }
        const char c = fText[fAt];
        if (c == ';') {
            ++fAt;
            if (statement.tokens.empty())
                continue; // an empty statement
            return true;
        }
        MaToken token;
        token.line = fLine;
        if (c == '"') {
            const std::size_t start = ++fAt;
            bool escaped = false;
            while (fAt < fText.size() && fText[fAt] != '"') {
                if (fText[fAt] == '\\' && fAt + 1 < fText.size()) {
                    escaped = true;
                    ++fAt;
                }
                fLine += fText[fAt] == '\n';
                ++fAt;
            }
            if (fAt >= fText.size()) {
                fError = "line " + std::to_string(token.line) + ": a string is not closed before the end of the file";
                return false;
            }
            token.text = fText.substr(start, fAt - start);
            token.quoted = true;
            ++fAt;
            if (escaped) {
                std::string out;
                for (std::size_t i = 0; i < token.text.size(); ++i) {
                    char ch = token.text[i];
                    if (ch == '\\' && i + 1 < token.text.size()) {
                        ch = token.text[++i];
                        ch = ch == 'n' ? '\n' : ch == 't' ? '\t' : ch == 'r' ? '\r' : ch;
                    }
                    out += ch;
                }
                fUnescaped.push_back(std::move(out));
                token.text = fUnescaped.back();
            }
        } else {
            const std::size_t start = fAt;
            while (fAt < fText.size() && !std::isspace(static_cast<unsigned char>(fText[fAt])) && fText[fAt] != ';' &&
                   fText[fAt] != '"')
                ++fAt;
            token.text = fText.substr(start, fAt - start);
        }
        if (statement.tokens.empty()) {
            if (token.quoted) {
                fError = "line " + std::to_string(token.line) + ": a statement starts with a string, not a command";
                return false;
            }
            statement.line = token.line;
        }
        statement.tokens.push_back(token);
    }
}

} // namespace host
