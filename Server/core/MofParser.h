// MofParser: turns MOF files into declarations (MofAst.h).
//
// Accepts qualifier declarations, class declarations (properties of every
// type, fixed and variable arrays, references, default values, qualifiers
// with flavors, methods with parameters), instance declarations with
// aliases, "#pragma include", "#pragma namespace", comments, string escapes
// and concatenation of adjacent strings. Other pragmas are ignored.
#ifndef ZAR_SERVER_CORE_MOFPARSER_H
#define ZAR_SERVER_CORE_MOFPARSER_H

#include <string>
#include <vector>

#include "MofAst.h"
#include "MofLexer.h"

namespace zarserver {

class MofParser {
public:
    // Includes may nest up to maxIncludeDepth files deep.
    explicit MofParser(int maxIncludeDepth = 16);

    // Parses the file at path and everything it includes (paths relative to
    // the including file), appending the declarations in source order.
    // Throws MofError naming file, line and column of the first error.
    void parseFile(const std::string& path, std::vector<mof::Declaration>& out);

    // Same for text held in memory; fileName is used in positions and as
    // the base for relative includes.
    void parseText(const std::string& fileName, const std::string& text,
                   std::vector<mof::Declaration>& out);

private:
    struct State;
    void parseUnit(State& st);
    void parsePragma(State& st);
    void parseQualifierDecl(State& st, const SourcePos& pos);
    void parseClass(State& st, std::vector<mof::Qualifier> quals, const SourcePos& pos);
    void parseInstance(State& st, std::vector<mof::Qualifier> quals, const SourcePos& pos);
    std::vector<mof::Qualifier> parseQualifierList(State& st);
    mof::TypeRef parseType(State& st);
    void parseArraySuffix(State& st, mof::TypeRef& type);
    mof::Literal parseInitializer(State& st);
    mof::Literal parseConstant(State& st);
    void includeFile(State& st, const std::string& name, const SourcePos& pos);

    int _maxIncludeDepth;
    std::vector<std::string> _includeStack;
    std::string _nameSpace;
};

// True if a and b are equal ignoring ASCII case.
bool equalNoCase(const std::string& a, const std::string& b);

}  // namespace zarserver

#endif
