// MofAst: the declarations of a MOF file as written, before typing and
// inheritance are resolved (see SchemaCompiler).
#ifndef ZAR_SERVER_CORE_MOFAST_H
#define ZAR_SERVER_CORE_MOFAST_H

#include <string>
#include <vector>

#include "MofError.h"

namespace zarserver {
namespace mof {

// An initializer as written: a constant, an alias, NULL or a list of these.
struct Literal {
    enum Kind { NONE, NULLVALUE, BOOLEAN, INTEGER, REAL, STRING, CHAR, ALIAS, ARRAY };
    Kind kind = NONE;            // NONE: no initializer was given
    bool boolean = false;        // BOOLEAN
    bool negative = false;       // INTEGER: a leading '-'
    std::string text;            // INTEGER magnitude (decimal), REAL text, STRING/CHAR
                                 // value (UTF-8), ALIAS name
    std::vector<Literal> items;  // ARRAY elements (never arrays themselves)
    SourcePos pos;
};

// A qualifier applied to an element: Name(value) : flavors.
struct Qualifier {
    std::string name;
    Literal value;                     // kind NONE when written without a value
    std::vector<std::string> flavors;  // as written, e.g. "DisableOverride"
    SourcePos pos;
};

// Data type of a property, parameter or qualifier as written.
struct TypeRef {
    std::string name;      // "uint16", "string", ...; "ref" for references
    std::string refClass;  // class of a reference
    bool isArray = false;
    int arraySize = 0;  // fixed size, 0 for variable arrays
};

// qualifier Name : type [= default], scope(...) [, flavor(...)];
struct QualifierDecl {
    std::string name;
    TypeRef type;
    Literal defaultValue;
    std::vector<std::string> scopes;
    std::vector<std::string> flavors;
    SourcePos pos;
};

struct Parameter {
    std::vector<Qualifier> qualifiers;
    TypeRef type;
    std::string name;
    SourcePos pos;
};

// A property (isMethod false) or a method of a class.
struct Feature {
    std::vector<Qualifier> qualifiers;
    TypeRef type;  // the return type for a method
    std::string name;
    bool isMethod = false;
    Literal defaultValue;               // properties only
    std::vector<Parameter> parameters;  // methods only
    SourcePos pos;
};

struct ClassDecl {
    std::vector<Qualifier> qualifiers;
    std::string name;
    std::string superClass;  // empty for a root class
    std::string alias;
    std::vector<Feature> features;
    SourcePos pos;
};

struct PropertyValue {
    std::vector<Qualifier> qualifiers;
    std::string name;
    Literal value;
    SourcePos pos;
};

struct InstanceDecl {
    std::vector<Qualifier> qualifiers;
    std::string className;
    std::string alias;
    std::vector<PropertyValue> properties;
    SourcePos pos;
};

// One top-level declaration. nameSpace is the namespace chosen by the last
// "#pragma namespace" before it, or empty for the compilation's default.
struct Declaration {
    enum Kind { QUALIFIER, CLASS, INSTANCE };
    Kind kind = CLASS;
    std::string nameSpace;
    QualifierDecl qualifierDecl;
    ClassDecl classDecl;
    InstanceDecl instanceDecl;
};

}  // namespace mof
}  // namespace zarserver

#endif
