#include "MofParser.h"

#include <cctype>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>

namespace zarserver {

bool equalNoCase(const std::string& a, const std::string& b)
{
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) !=
            std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

namespace {

const char* const kDataTypes[] = {"boolean", "uint8",  "sint8",  "uint16",  "sint16",
                                  "uint32",  "sint32", "uint64", "sint64",  "real32",
                                  "real64",  "char16", "string", "datetime"};

bool isDataType(const std::string& s)
{
    for (const char* t : kDataTypes)
        if (equalNoCase(s, t))
            return true;
    return false;
}

std::string lower(std::string s)
{
    for (char& c : s)
        c = char(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

std::string describe(const MofToken& t)
{
    switch (t.kind) {
        case MofToken::END:
            return "end of file";
        case MofToken::IDENTIFIER:
            return "'" + t.text + "'";
        case MofToken::INTEGER:
        case MofToken::REAL:
            return "number " + t.text;
        case MofToken::STRING:
            return "string";
        case MofToken::CHAR:
            return "char literal";
        case MofToken::ALIAS:
            return "alias $" + t.text;
        case MofToken::PUNCT:
            return "'" + t.text + "'";
    }
    return "token";
}

}  // namespace

struct MofParser::State {
    State(const std::string& file, const std::string& text) : lexer(file, text)
    {
        tok = lexer.next();
        ahead = lexer.next();
    }
    MofLexer lexer;
    MofToken tok;    // current token
    MofToken ahead;  // the one after it
    std::vector<mof::Declaration>* out = nullptr;
    std::string file;

    void shift()
    {
        tok = ahead;
        ahead = lexer.next();
    }
    bool isPunct(char c) const { return tok.kind == MofToken::PUNCT && tok.text[0] == c; }
    bool isWord(const char* w) const
    {
        return tok.kind == MofToken::IDENTIFIER && equalNoCase(tok.text, w);
    }
    [[noreturn]] void fail(const std::string& what) const
    {
        throw MofError(tok.pos, what + ", found " + describe(tok));
    }
    void expectPunct(char c)
    {
        if (!isPunct(c))
            fail(std::string("expected '") + c + "'");
        shift();
    }
    void expectWord(const char* w)
    {
        if (!isWord(w))
            fail(std::string("expected '") + w + "'");
        shift();
    }
    std::string expectIdentifier(const char* what)
    {
        if (tok.kind != MofToken::IDENTIFIER)
            fail(std::string("expected ") + what);
        std::string s = tok.text;
        shift();
        return s;
    }
    std::string expectString(const char* what)
    {
        if (tok.kind != MofToken::STRING)
            fail(std::string("expected ") + what);
        std::string s = tok.text;
        shift();
        while (tok.kind == MofToken::STRING) {  // adjacent strings concatenate
            s += tok.text;
            shift();
        }
        return s;
    }
};

MofParser::MofParser(int maxIncludeDepth) : _maxIncludeDepth(maxIncludeDepth) {}

void MofParser::parseFile(const std::string& path, std::vector<mof::Declaration>& out)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        SourcePos p;
        p.file = path;
        throw MofError(p, std::string("cannot open file: ") + std::strerror(errno));
    }
    std::stringstream buf;
    buf << in.rdbuf();
    parseText(path, buf.str(), out);
}

void MofParser::parseText(const std::string& fileName, const std::string& text,
                          std::vector<mof::Declaration>& out)
{
    State st(fileName, text);
    st.out = &out;
    st.file = fileName;
    _includeStack.push_back(fileName);
    try {
        parseUnit(st);
    } catch (...) {
        _includeStack.pop_back();
        throw;
    }
    _includeStack.pop_back();
}

void MofParser::parseUnit(State& st)
{
    while (st.tok.kind != MofToken::END) {
        SourcePos pos = st.tok.pos;
        if (st.isPunct('#')) {
            parsePragma(st);
            continue;
        }
        if (st.isPunct(';')) {  // stray semicolons are harmless
            st.shift();
            continue;
        }
        std::vector<mof::Qualifier> quals;
        if (st.isPunct('['))
            quals = parseQualifierList(st);
        if (st.isWord("class")) {
            parseClass(st, std::move(quals), pos);
        } else if (st.isWord("instance")) {
            parseInstance(st, std::move(quals), pos);
        } else if (st.isWord("qualifier") && quals.empty()) {
            parseQualifierDecl(st, pos);
        } else {
            st.fail(quals.empty() ? "expected 'class', 'instance', 'qualifier' or '#pragma'"
                                  : "expected 'class' or 'instance' after qualifiers");
        }
    }
}

void MofParser::parsePragma(State& st)
{
    SourcePos pos = st.tok.pos;
    st.expectPunct('#');
    st.expectWord("pragma");
    std::string name = lower(st.expectIdentifier("pragma name"));
    st.expectPunct('(');
    std::string arg = st.expectString("pragma argument string");
    while (st.isPunct(',')) {  // e.g. #pragma instancelocale("x", "y")
        st.shift();
        st.expectString("pragma argument string");
    }
    st.expectPunct(')');
    if (name == "include") {
        includeFile(st, arg, pos);
    } else if (name == "namespace") {
        _nameSpace = arg;
    }
}

void MofParser::includeFile(State& st, const std::string& name, const SourcePos& pos)
{
    if (int(_includeStack.size()) >= _maxIncludeDepth)
        throw MofError(pos, "includes nested deeper than " + std::to_string(_maxIncludeDepth) +
                                " files (include cycle?)");
    std::string path = name;
    if (name.empty() || name[0] != '/') {
        size_t slash = st.file.rfind('/');
        if (slash != std::string::npos)
            path = st.file.substr(0, slash + 1) + name;
    }
    for (const std::string& open : _includeStack)
        if (open == path)
            throw MofError(pos, "file '" + name + "' includes itself");
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw MofError(pos, "cannot open included file '" + name + "': " + std::strerror(errno));
    std::stringstream buf;
    buf << in.rdbuf();
    parseText(path, buf.str(), *st.out);
}

void MofParser::parseQualifierDecl(State& st, const SourcePos& pos)
{
    mof::Declaration d;
    d.kind = mof::Declaration::QUALIFIER;
    d.nameSpace = _nameSpace;
    mof::QualifierDecl& q = d.qualifierDecl;
    q.pos = pos;
    st.expectWord("qualifier");
    q.name = st.expectIdentifier("qualifier name");
    st.expectPunct(':');
    if (st.tok.kind != MofToken::IDENTIFIER || !isDataType(st.tok.text))
        st.fail("expected the qualifier's data type");
    q.type.name = lower(st.tok.text);
    st.shift();
    parseArraySuffix(st, q.type);
    if (st.isPunct('=')) {
        st.shift();
        q.defaultValue = parseInitializer(st);
    }
    while (st.isPunct(',')) {
        st.shift();
        bool scope = st.isWord("scope");
        if (!scope && !st.isWord("flavor"))
            st.fail("expected 'scope' or 'flavor'");
        st.shift();
        st.expectPunct('(');
        std::vector<std::string>& list = scope ? q.scopes : q.flavors;
        for (;;) {
            list.push_back(st.expectIdentifier(scope ? "scope name" : "flavor name"));
            if (!st.isPunct(','))
                break;
            st.shift();
        }
        st.expectPunct(')');
    }
    if (q.scopes.empty())
        throw MofError(pos, "qualifier " + q.name + " declares no scope");
    st.expectPunct(';');
    st.out->push_back(std::move(d));
}

std::vector<mof::Qualifier> MofParser::parseQualifierList(State& st)
{
    std::vector<mof::Qualifier> quals;
    st.expectPunct('[');
    for (;;) {
        mof::Qualifier q;
        q.pos = st.tok.pos;
        q.name = st.expectIdentifier("qualifier name");
        if (st.isPunct('(')) {
            st.shift();
            q.value = parseConstant(st);
            st.expectPunct(')');
        } else if (st.isPunct('{')) {
            q.value = parseInitializer(st);
        }
        if (st.isPunct(':')) {
            st.shift();
            while (st.tok.kind == MofToken::IDENTIFIER) {
                q.flavors.push_back(st.tok.text);
                st.shift();
            }
            if (q.flavors.empty())
                st.fail("expected a flavor after ':'");
        }
        quals.push_back(std::move(q));
        if (st.isPunct(']'))
            break;
        st.expectPunct(',');
    }
    st.shift();
    return quals;
}

mof::TypeRef MofParser::parseType(State& st)
{
    mof::TypeRef t;
    if (st.tok.kind != MofToken::IDENTIFIER)
        st.fail("expected a data type or class name");
    if (st.ahead.kind == MofToken::IDENTIFIER && equalNoCase(st.ahead.text, "ref")) {
        t.name = "ref";
        t.refClass = st.tok.text;
        st.shift();
        st.shift();
        return t;
    }
    if (!isDataType(st.tok.text))
        st.fail("expected a data type");
    t.name = lower(st.tok.text);
    st.shift();
    return t;
}

void MofParser::parseArraySuffix(State& st, mof::TypeRef& type)
{
    if (!st.isPunct('['))
        return;
    st.shift();
    type.isArray = true;
    if (st.tok.kind == MofToken::INTEGER) {
        if (st.tok.text.size() > 9 || std::stoul(st.tok.text) == 0)
            st.fail("expected a positive array size");
        type.arraySize = int(std::stoul(st.tok.text));
        st.shift();
    }
    st.expectPunct(']');
}

void MofParser::parseClass(State& st, std::vector<mof::Qualifier> quals, const SourcePos& pos)
{
    mof::Declaration d;
    d.kind = mof::Declaration::CLASS;
    d.nameSpace = _nameSpace;
    mof::ClassDecl& c = d.classDecl;
    c.pos = pos;
    c.qualifiers = std::move(quals);
    st.expectWord("class");
    c.name = st.expectIdentifier("class name");
    if (st.isWord("as")) {
        st.shift();
        if (st.tok.kind != MofToken::ALIAS)
            st.fail("expected an alias");
        c.alias = st.tok.text;
        st.shift();
    }
    if (st.isPunct(':')) {
        st.shift();
        c.superClass = st.expectIdentifier("superclass name");
    }
    st.expectPunct('{');
    while (!st.isPunct('}')) {
        mof::Feature f;
        f.pos = st.tok.pos;
        if (st.isPunct('['))
            f.qualifiers = parseQualifierList(st);
        f.type = parseType(st);
        f.name = st.expectIdentifier("property or method name");
        if (st.isPunct('(')) {
            f.isMethod = true;
            st.shift();
            while (!st.isPunct(')')) {
                mof::Parameter p;
                p.pos = st.tok.pos;
                if (st.isPunct('['))
                    p.qualifiers = parseQualifierList(st);
                p.type = parseType(st);
                p.name = st.expectIdentifier("parameter name");
                parseArraySuffix(st, p.type);
                f.parameters.push_back(std::move(p));
                if (st.isPunct(')'))
                    break;
                st.expectPunct(',');
            }
            st.shift();
        } else {
            parseArraySuffix(st, f.type);
            if (st.isPunct('=')) {
                st.shift();
                f.defaultValue = parseInitializer(st);
            }
        }
        st.expectPunct(';');
        c.features.push_back(std::move(f));
    }
    st.shift();
    st.expectPunct(';');
    st.out->push_back(std::move(d));
}

void MofParser::parseInstance(State& st, std::vector<mof::Qualifier> quals, const SourcePos& pos)
{
    mof::Declaration d;
    d.kind = mof::Declaration::INSTANCE;
    d.nameSpace = _nameSpace;
    mof::InstanceDecl& inst = d.instanceDecl;
    inst.pos = pos;
    inst.qualifiers = std::move(quals);
    st.expectWord("instance");
    st.expectWord("of");
    inst.className = st.expectIdentifier("class name");
    if (st.isWord("as")) {
        st.shift();
        if (st.tok.kind != MofToken::ALIAS)
            st.fail("expected an alias");
        inst.alias = st.tok.text;
        st.shift();
    }
    st.expectPunct('{');
    while (!st.isPunct('}')) {
        mof::PropertyValue pv;
        pv.pos = st.tok.pos;
        if (st.isPunct('['))
            pv.qualifiers = parseQualifierList(st);
        pv.name = st.expectIdentifier("property name");
        st.expectPunct('=');
        pv.value = parseInitializer(st);
        st.expectPunct(';');
        inst.properties.push_back(std::move(pv));
    }
    st.shift();
    st.expectPunct(';');
    st.out->push_back(std::move(d));
}

mof::Literal MofParser::parseInitializer(State& st)
{
    if (!st.isPunct('{'))
        return parseConstant(st);
    mof::Literal a;
    a.kind = mof::Literal::ARRAY;
    a.pos = st.tok.pos;
    st.shift();
    while (!st.isPunct('}')) {
        if (st.isPunct('{'))
            st.fail("nested arrays are not allowed");
        a.items.push_back(parseConstant(st));
        if (st.isPunct('}'))
            break;
        st.expectPunct(',');
    }
    st.shift();
    return a;
}

mof::Literal MofParser::parseConstant(State& st)
{
    mof::Literal v;
    v.pos = st.tok.pos;
    bool negative = false, sign = false;
    if (st.isPunct('-') || st.isPunct('+')) {
        negative = st.isPunct('-');
        sign = true;
        st.shift();
        if (st.tok.kind != MofToken::INTEGER && st.tok.kind != MofToken::REAL)
            st.fail("expected a number after the sign");
    }
    switch (st.tok.kind) {
        case MofToken::INTEGER:
            v.kind = mof::Literal::INTEGER;
            v.negative = negative && st.tok.text != "0";
            v.text = st.tok.text;
            st.shift();
            return v;
        case MofToken::REAL:
            v.kind = mof::Literal::REAL;
            v.text = (negative ? "-" : "") + st.tok.text;
            st.shift();
            return v;
        case MofToken::STRING:
            v.kind = mof::Literal::STRING;
            v.text = st.expectString("string");
            return v;
        case MofToken::CHAR:
            v.kind = mof::Literal::CHAR;
            v.text = st.tok.text;
            st.shift();
            return v;
        case MofToken::ALIAS:
            v.kind = mof::Literal::ALIAS;
            v.text = st.tok.text;
            st.shift();
            return v;
        case MofToken::IDENTIFIER:
            if (st.isWord("true") || st.isWord("false")) {
                v.kind = mof::Literal::BOOLEAN;
                v.boolean = st.isWord("true");
                st.shift();
                return v;
            }
            if (st.isWord("null")) {
                v.kind = mof::Literal::NULLVALUE;
                st.shift();
                return v;
            }
            break;
        default:
            break;
    }
    (void)sign;
    st.fail("expected a value");
}

}  // namespace zarserver
