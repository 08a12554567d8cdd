// MOF source: the lexer and the parser, then the schema compiler over what
// parsed, in a fresh repository that already holds the project's qualifier
// declarations (so that classes and instances of the input get typed).
// Includes are refused (an input must not make the fuzzer read files).
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include <Pegasus/Common/Exception.h>

#include "ClassRepository.h"
#include "MofParser.h"
#include "SchemaCompiler.h"

PEGASUS_USING_PEGASUS;
using namespace zarserver;

namespace {

const std::vector<mof::Declaration>& qualifierDecls()
{
    static const std::vector<mof::Declaration> decls = [] {
        std::vector<mof::Declaration> d;
        MofParser().parseFile(std::string(ZAR_SOURCE_DIR) + "/schema/qualifiers.mof", d);
        return d;
    }();
    return decls;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::vector<mof::Declaration> decls;
    try {
        // Depth 1: the input itself, no file it names.
        MofParser(1).parseText("/nonexistent/fuzz.mof", text, decls);
    } catch (const MofError&) {
        return 0;
    }
    ClassRepository repository;
    SchemaCompiler compiler(repository);
    const CIMNamespaceName ns("root/fuzz");
    try {
        compiler.compile(qualifierDecls(), ns);
        compiler.compile(decls, ns);
    } catch (const MofError&) {
    } catch (const Exception&) {
    } catch (const std::exception&) {
    }
    return 0;
}
