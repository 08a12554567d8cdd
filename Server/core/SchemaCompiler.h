// SchemaCompiler: checks parsed MOF declarations and adds them to a
// ClassRepository.
//
// Qualifier declarations are typed; classes are resolved against their
// superclass (inherited properties, methods and qualifiers are copied in,
// marked propagated, and overrides take the inherited qualifiers they do not
// redefine); every qualifier use must be declared and within its scope;
// instances are typed against their class and keep their aliases for
// reference values.
#ifndef ZAR_SERVER_CORE_SCHEMACOMPILER_H
#define ZAR_SERVER_CORE_SCHEMACOMPILER_H

#include <vector>

#include "ClassRepository.h"
#include "MofAst.h"
#include "MofValue.h"

namespace zarserver {

class SchemaCompiler {
public:
    explicit SchemaCompiler(ClassRepository& repository);

    // Adds the declarations to the repository. Those without a "#pragma
    // namespace" go to defaultNamespace (created if needed). Throws MofError
    // at the first declaration that is not valid; the declarations before
    // it stay added.
    void compile(const std::vector<mof::Declaration>& declarations,
                 const Pegasus::CIMNamespaceName& defaultNamespace);

private:
    void addQualifierDecl(const Pegasus::CIMNamespaceName& ns, const mof::QualifierDecl& d);
    void addClass(const Pegasus::CIMNamespaceName& ns, const mof::ClassDecl& d);
    void addInstance(const Pegasus::CIMNamespaceName& ns, const mof::InstanceDecl& d);

    ClassRepository& _repository;
    AliasMap _aliases;
};

}  // namespace zarserver

#endif
