// Formatter: $0..$9 substitution, and the message parameters built on it.

#include <Pegasus/Common/Formatter.h>
#include <Pegasus/Common/MessageLoader.h>

#include <cstdio>

PEGASUS_NAMESPACE_BEGIN

const Formatter::Arg Formatter::DEFAULT_ARG;

Formatter::Arg::Arg() : _integer(0), _type(VOIDT) {}
Formatter::Arg::Arg(const String& x) : _string(x), _integer(0), _type(STRING) {}
Formatter::Arg::Arg(const char* x) : _string(x), _integer(0), _type(STRING) {}
Formatter::Arg::Arg(Boolean x) : _integer(0), _type(BOOLEAN)
{
    _boolean = x;
}
Formatter::Arg::Arg(Sint32 x) : _integer(x), _type(INTEGER) {}
Formatter::Arg::Arg(Uint32 x) : _uinteger(x), _type(UINTEGER) {}
Formatter::Arg::Arg(Sint64 x) : _integer(x), _type(LINTEGER) {}
Formatter::Arg::Arg(Uint64 x) : _uinteger(x), _type(ULINTEGER) {}
Formatter::Arg::Arg(Real64 x) : _real(x), _type(REAL) {}

String Formatter::Arg::toString() const
{
    char buf[64];
    switch (_type) {
        case VOIDT:
            return String();
        case STRING:
            return _string;
        case BOOLEAN:
            return String(_boolean ? "true" : "false");
        case INTEGER:
        case LINTEGER:
            std::snprintf(buf, sizeof(buf), "%lld", _integer);
            return String(buf);
        case UINTEGER:
        case ULINTEGER:
            std::snprintf(buf, sizeof(buf), "%llu", _uinteger);
            return String(buf);
        case REAL:
            std::snprintf(buf, sizeof(buf), "%g", _real);
            return String(buf);
    }
    return String();
}

String Formatter::format(const String& format, const Arg& arg0, const Arg& arg1, const Arg& arg2,
                         const Arg& arg3, const Arg& arg4, const Arg& arg5, const Arg& arg6,
                         const Arg& arg7, const Arg& arg8, const Arg& arg9)
{
    const Arg* args[10] = {&arg0, &arg1, &arg2, &arg3, &arg4, &arg5, &arg6, &arg7, &arg8, &arg9};
    String out;
    const Char16* p = format.getChar16Data();
    Uint32 n = format.size();
    for (Uint32 i = 0; i < n; i++) {
        Uint16 c = p[i];
        if (c == '\\' && i + 1 < n && p[i + 1] == '$') {
            out.append(Char16('$'));
            i++;
        } else if (c == '$' && i + 1 < n && p[i + 1] >= '0' && p[i + 1] <= '9') {
            out.append(args[p[i + 1] - '0']->toString());
            i++;
        } else {
            out.append(Char16(c));
        }
    }
    return out;
}

MessageLoaderParms::MessageLoaderParms() {}

MessageLoaderParms::MessageLoaderParms(const String& id, const String& msg,
                                       const Formatter::Arg& a0, const Formatter::Arg& a1,
                                       const Formatter::Arg& a2, const Formatter::Arg& a3,
                                       const Formatter::Arg& a4, const Formatter::Arg& a5,
                                       const Formatter::Arg& a6, const Formatter::Arg& a7,
                                       const Formatter::Arg& a8, const Formatter::Arg& a9)
    : msg_id(id),
      default_msg(msg),
      arg0(a0),
      arg1(a1),
      arg2(a2),
      arg3(a3),
      arg4(a4),
      arg5(a5),
      arg6(a6),
      arg7(a7),
      arg8(a8),
      arg9(a9)
{
}

String MessageLoaderParms::toString() const
{
    return Formatter::format(default_msg, arg0, arg1, arg2, arg3, arg4, arg5, arg6, arg7, arg8,
                             arg9);
}

String MessageLoader::getMessage(MessageLoaderParms& parms)
{
    return parms.toString();
}

PEGASUS_NAMESPACE_END
