//%/////////////////////////////////////////////////////////////////////////////
// Formatter: replaces $0..$9 in a text by the matching argument. "\$" (a
// backslash before the dollar) writes a literal '$'.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_Formatter_h
#define Pegasus_Formatter_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_COMMON_LINKAGE Formatter {
public:
    // One argument: text, an integer, a real or a boolean (written true/false).
    class PEGASUS_COMMON_LINKAGE Arg {
    public:
        enum Type { VOIDT, STRING, BOOLEAN, INTEGER, UINTEGER, LINTEGER, ULINTEGER, REAL };

        // An argument that formats as nothing.
        Arg();
        Arg(const String& x);
        Arg(const char* x);
        Arg(Boolean x);
        Arg(Sint32 x);
        Arg(Uint32 x);
        Arg(Sint64 x);
        Arg(Uint64 x);
        Arg(Real64 x);

        // The argument's text.
        String toString() const;

    private:
        String _string;
        union {
            Sint64 _integer;
            Uint64 _uinteger;
            Real64 _real;
            Boolean _boolean;
        };
        Type _type;
    };

    static const Arg DEFAULT_ARG;

    // format with $0..$9 replaced by arg0..arg9.
    static String format(const String& format, const Arg& arg0 = DEFAULT_ARG,
                         const Arg& arg1 = DEFAULT_ARG, const Arg& arg2 = DEFAULT_ARG,
                         const Arg& arg3 = DEFAULT_ARG, const Arg& arg4 = DEFAULT_ARG,
                         const Arg& arg5 = DEFAULT_ARG, const Arg& arg6 = DEFAULT_ARG,
                         const Arg& arg7 = DEFAULT_ARG, const Arg& arg8 = DEFAULT_ARG,
                         const Arg& arg9 = DEFAULT_ARG);
};

PEGASUS_NAMESPACE_END

#endif
