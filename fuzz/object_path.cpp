// Object path text: CIMObjectPath parses any byte string without crashing,
// and a path it accepts prints as text that parses back to the same path
// (the text of a printed path is canonical: printing it again changes nothing).
#include <cstddef>
#include <cstdint>

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/Exception.h>

#include "FuzzCheck.h"

PEGASUS_USING_PEGASUS;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    String text;
    try {
        text = String(reinterpret_cast<const char*>(data), Uint32(size));
    } catch (Exception&) {
        return 0;  // not UTF-8
    }
    CIMObjectPath path;
    try {
        path.set(text);
    } catch (Exception&) {
        FUZZ_CHECK(path.toString().size() == 0, "a refused text leaves the path unchanged");
        return 0;
    }
    String printed = path.toString();
    CIMObjectPath again;
    try {
        again.set(printed);
    } catch (Exception& e) {
        FUZZ_CHECK(false, "the printed form of an accepted path parses");
    }
    FUZZ_CHECK(again.identical(path), "printed path reads back as the same path");
    FUZZ_CHECK(again.makeHashCode() == path.makeHashCode(), "equal paths hash alike");
    FUZZ_CHECK(again.toString() == printed, "printing is canonical");

    CIMObjectPath rebuilt(path.getHost(), path.getNameSpace(), path.getClassName(),
                          path.getKeyBindings());
    FUZZ_CHECK(rebuilt.identical(path), "a path rebuilt from its parts is the same path");
    return 0;
}
