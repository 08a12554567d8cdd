// MofError: a MOF compilation error with the position where it was found.
#ifndef ZAR_SERVER_CORE_MOFERROR_H
#define ZAR_SERVER_CORE_MOFERROR_H

#include <stdexcept>
#include <string>

namespace zarserver {

// A place in a MOF source file; line and column count from 1.
struct SourcePos {
    std::string file;
    int line = 0;
    int column = 0;

    // "file:line:column".
    std::string toString() const
    {
        return file + ":" + std::to_string(line) + ":" + std::to_string(column);
    }
};

// Thrown by the MOF lexer, parser and schema compiler. what() is
// "file:line:column: message".
class MofError : public std::runtime_error {
public:
    MofError(const SourcePos& pos, const std::string& message)
        : std::runtime_error(pos.toString() + ": " + message), _pos(pos), _message(message)
    {
    }

    const SourcePos& pos() const { return _pos; }
    // The message without the position.
    const std::string& message() const { return _message; }

private:
    SourcePos _pos;
    std::string _message;
};

}  // namespace zarserver

#endif
