#include "MofLexer.h"

#include <cctype>
#include <cerrno>
#include <cstdlib>

namespace zarserver {

void appendUtf8(std::string& out, unsigned cp)
{
    if (cp < 0x80) {
        out += char(cp);
    } else if (cp < 0x800) {
        out += char(0xC0 | (cp >> 6));
        out += char(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += char(0xE0 | (cp >> 12));
        out += char(0x80 | ((cp >> 6) & 0x3F));
        out += char(0x80 | (cp & 0x3F));
    } else {
        out += char(0xF0 | (cp >> 18));
        out += char(0x80 | ((cp >> 12) & 0x3F));
        out += char(0x80 | ((cp >> 6) & 0x3F));
        out += char(0x80 | (cp & 0x3F));
    }
}

MofLexer::MofLexer(const std::string& fileName, const std::string& text)
    : _file(fileName), _text(text)
{
    // A UTF-8 byte order mark is allowed at the start of a file.
    if (_text.compare(0, 3, "\xEF\xBB\xBF") == 0)
        _i = 3;
}

char MofLexer::peek(size_t ahead) const
{
    return _i + ahead < _text.size() ? _text[_i + ahead] : '\0';
}

void MofLexer::advance()
{
    if (_i >= _text.size())
        return;
    if (_text[_i] == '\n') {
        ++_line;
        _col = 1;
    } else if ((static_cast<unsigned char>(_text[_i]) & 0xC0) != 0x80) {
        ++_col;  // columns count characters, not UTF-8 continuation bytes
    }
    ++_i;
}

SourcePos MofLexer::here() const
{
    SourcePos p;
    p.file = _file;
    p.line = _line;
    p.column = _col;
    return p;
}

void MofLexer::skipSpaceAndComments()
{
    for (;;) {
        char c = peek();
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v') {
            advance();
        } else if (c == '/' && peek(1) == '/') {
            while (_i < _text.size() && peek() != '\n')
                advance();
        } else if (c == '/' && peek(1) == '*') {
            SourcePos start = here();
            advance();
            advance();
            for (;;) {
                if (_i >= _text.size())
                    throw MofError(start, "unterminated comment");
                if (peek() == '*' && peek(1) == '/') {
                    advance();
                    advance();
                    break;
                }
                advance();
            }
        } else {
            return;
        }
    }
}

void MofLexer::copyUtf8(std::string& out)
{
    SourcePos start = here();
    unsigned char c = static_cast<unsigned char>(peek());
    int len = c < 0x80 ? 1 : (c >> 5) == 6 ? 2 : (c >> 4) == 14 ? 3 : (c >> 3) == 30 ? 4 : 0;
    if (len == 0 || _i + len > _text.size())
        throw MofError(start, "invalid UTF-8 byte sequence");
    unsigned cp = len == 1 ? c : len == 2 ? (c & 0x1F) : len == 3 ? (c & 0x0F) : (c & 0x07);
    for (int k = 1; k < len; ++k) {
        unsigned char cc = static_cast<unsigned char>(_text[_i + k]);
        if ((cc & 0xC0) != 0x80)
            throw MofError(start, "invalid UTF-8 byte sequence");
        cp = (cp << 6) | (cc & 0x3F);
    }
    static const unsigned minimum[] = {0, 0, 0x80, 0x800, 0x10000};
    if (cp < minimum[len] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF))
        throw MofError(start, "invalid UTF-8 byte sequence");
    for (int k = 0; k < len; ++k) {
        out += _text[_i];
        advance();
    }
}

MofToken MofLexer::next()
{
    skipSpaceAndComments();
    MofToken t;
    t.pos = here();
    if (_i >= _text.size()) {
        t.kind = MofToken::END;
        return t;
    }
    char c = peek();
    unsigned char uc = static_cast<unsigned char>(c);
    if (std::isalpha(uc) || c == '_' || uc >= 0x80) {
        t.kind = MofToken::IDENTIFIER;
        while (_i < _text.size()) {
            unsigned char d = static_cast<unsigned char>(peek());
            if (std::isalnum(d) || d == '_') {
                t.text += peek();
                advance();
            } else if (d >= 0x80) {
                copyUtf8(t.text);
            } else {
                break;
            }
        }
        return t;
    }
    if (std::isdigit(uc) || (c == '.' && std::isdigit(static_cast<unsigned char>(peek(1)))))
        return lexNumber();
    if (c == '"')
        return lexString();
    if (c == '\'')
        return lexChar();
    if (c == '$') {
        advance();
        t.kind = MofToken::ALIAS;
        while (std::isalnum(static_cast<unsigned char>(peek())) || peek() == '_') {
            t.text += peek();
            advance();
        }
        if (t.text.empty())
            throw MofError(t.pos, "alias name expected after '$'");
        return t;
    }
    static const std::string punct = "{}[]();,:=#+-";
    if (punct.find(c) != std::string::npos) {
        t.kind = MofToken::PUNCT;
        t.text = std::string(1, c);
        advance();
        return t;
    }
    std::string shown =
        uc >= 0x20 && uc < 0x7F ? std::string("'") + c + "'" : "byte " + std::to_string(uc);
    throw MofError(t.pos, "unexpected character " + shown);
}

MofToken MofLexer::lexNumber()
{
    MofToken t;
    t.pos = here();
    std::string raw;
    while (std::isalnum(static_cast<unsigned char>(peek())) || peek() == '.' ||
           ((peek() == '+' || peek() == '-') && !raw.empty() &&
            (raw.back() == 'e' || raw.back() == 'E') && raw.find('.') != std::string::npos)) {
        raw += peek();
        advance();
    }
    auto bad = [&]() -> MofError { return MofError(t.pos, "invalid number '" + raw + "'"); };
    bool isReal = raw.find('.') != std::string::npos ||
                  (raw.find_first_of("eE") != std::string::npos && raw.compare(0, 2, "0x") != 0 &&
                   raw.compare(0, 2, "0X") != 0);
    if (isReal) {
        char* end = nullptr;
        errno = 0;
        std::strtod(raw.c_str(), &end);
        if (*end != '\0' || errno == ERANGE)
            throw bad();
        t.kind = MofToken::REAL;
        t.text = raw;
        return t;
    }
    unsigned long long v = 0;
    auto accumulate = [&](const std::string& digits, unsigned base) {
        if (digits.empty())
            throw bad();
        for (char d : digits) {
            unsigned dv;
            if (d >= '0' && d <= '9')
                dv = d - '0';
            else if (d >= 'a' && d <= 'f')
                dv = d - 'a' + 10;
            else if (d >= 'A' && d <= 'F')
                dv = d - 'A' + 10;
            else
                throw bad();
            if (dv >= base)
                throw bad();
            if (v > (~0ULL - dv) / base)
                throw MofError(t.pos, "integer '" + raw + "' is too large");
            v = v * base + dv;
        }
    };
    if (raw.size() > 2 && raw[0] == '0' && (raw[1] == 'x' || raw[1] == 'X')) {
        accumulate(raw.substr(2), 16);
    } else if (raw.size() > 1 && (raw.back() == 'b' || raw.back() == 'B')) {
        accumulate(raw.substr(0, raw.size() - 1), 2);
    } else if (raw.size() > 1 && raw[0] == '0') {
        accumulate(raw.substr(1), 8);
    } else {
        accumulate(raw, 10);
    }
    t.kind = MofToken::INTEGER;
    t.text = std::to_string(v);
    return t;
}

void MofLexer::lexQuotedChar(std::string& out, char quote, const SourcePos& start)
{
    char c = peek();
    if (_i >= _text.size() || c == '\n' || c == '\r')
        throw MofError(start, quote == '"' ? "unterminated string" : "unterminated char literal");
    if (c != '\\') {
        copyUtf8(out);
        return;
    }
    SourcePos escPos = here();
    advance();
    char e = peek();
    advance();
    switch (e) {
        case 'b':
            out += '\b';
            return;
        case 't':
            out += '\t';
            return;
        case 'n':
            out += '\n';
            return;
        case 'f':
            out += '\f';
            return;
        case 'r':
            out += '\r';
            return;
        case '"':
            out += '"';
            return;
        case '\'':
            out += '\'';
            return;
        case '\\':
            out += '\\';
            return;
        case 'x':
        case 'X': {
            unsigned cp = 0;
            int n = 0;
            while (n < 4 && std::isxdigit(static_cast<unsigned char>(peek()))) {
                char h = peek();
                cp = cp * 16 + (std::isdigit(static_cast<unsigned char>(h))
                                    ? h - '0'
                                    : (std::tolower(h) - 'a' + 10));
                advance();
                ++n;
            }
            if (n == 0)
                throw MofError(escPos, "hexadecimal digits expected after \\x");
            if (cp == 0 || (cp >= 0xD800 && cp <= 0xDFFF))
                throw MofError(escPos, "escape \\x names an invalid character");
            appendUtf8(out, cp);
            return;
        }
        default:
            throw MofError(escPos, std::string("unknown escape sequence '\\") +
                                       (e >= 0x20 && e < 0x7F ? std::string(1, e) : "?") + "'");
    }
}

MofToken MofLexer::lexString()
{
    MofToken t;
    t.kind = MofToken::STRING;
    t.pos = here();
    advance();  // opening quote
    while (peek() != '"' || _i >= _text.size())
        lexQuotedChar(t.text, '"', t.pos);
    advance();
    return t;
}

MofToken MofLexer::lexChar()
{
    MofToken t;
    t.kind = MofToken::CHAR;
    t.pos = here();
    advance();
    if (peek() == '\'')
        throw MofError(t.pos, "empty char literal");
    lexQuotedChar(t.text, '\'', t.pos);
    if (peek() != '\'')
        throw MofError(t.pos, "char literal holds more than one character");
    advance();
    return t;
}

}  // namespace zarserver
