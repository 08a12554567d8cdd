// MofLexer: splits MOF source text into tokens.
#ifndef ZAR_SERVER_CORE_MOFLEXER_H
#define ZAR_SERVER_CORE_MOFLEXER_H

#include <string>

#include "MofError.h"

namespace zarserver {

struct MofToken {
    enum Kind {
        END,         // end of input
        IDENTIFIER,  // names and keywords (keywords are recognised by the parser)
        INTEGER,     // unsigned integer literal; text holds its decimal value
        REAL,        // real literal without sign; text as written
        STRING,      // string literal; text holds the unescaped UTF-8 value
        CHAR,        // char16 literal; text holds the UTF-8 character
        ALIAS,       // $name; text holds name without '$'
        PUNCT        // one of { } [ ] ( ) ; , : = # ; text holds the character
    };
    Kind kind = END;
    std::string text;
    SourcePos pos;
};

// Reads tokens from one MOF file held in memory. Comments and white space
// are skipped. Invalid input throws MofError naming the position.
class MofLexer {
public:
    // fileName is used in positions only; text must outlive the lexer.
    MofLexer(const std::string& fileName, const std::string& text);

    // Returns the next token (END at the end, repeatedly).
    MofToken next();

private:
    char peek(size_t ahead = 0) const;
    void advance();
    SourcePos here() const;
    void skipSpaceAndComments();
    MofToken lexNumber();
    MofToken lexString();
    MofToken lexChar();
    // Reads one (possibly escaped) character of a string or char literal and
    // appends its UTF-8 form to out.
    void lexQuotedChar(std::string& out, char quote, const SourcePos& start);
    // Consumes one UTF-8 sequence at the current position (validated) and
    // appends it to out.
    void copyUtf8(std::string& out);

    std::string _file;
    const std::string& _text;
    size_t _i = 0;
    int _line = 1;
    int _col = 1;
};

// Appends the UTF-8 encoding of code point cp to out.
void appendUtf8(std::string& out, unsigned cp);

}  // namespace zarserver

#endif
