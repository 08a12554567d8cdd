//%/////////////////////////////////////////////////////////////////////////////
// MessageLoader.h: message parameters (an id, a default text with $0..$9
// placeholders and the arguments) and their formatting. This framework has
// no message catalogue: getMessage() always formats the default text.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_MessageLoader_h
#define Pegasus_MessageLoader_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/Formatter.h>
#include <Pegasus/Common/ContentLanguageList.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_COMMON_LINKAGE MessageLoaderParms {
public:
    // Message catalogue key (unused here).
    String msg_id;

    // The text with $0..$9 placeholders.
    String default_msg;

    // The arguments for $0..$9.
    Formatter::Arg arg0, arg1, arg2, arg3, arg4, arg5, arg6, arg7, arg8, arg9;

    // The languages of the formatted message (always empty here).
    ContentLanguageList contentlanguages;

    MessageLoaderParms();

    MessageLoaderParms(const String& id, const String& msg,
                       const Formatter::Arg& a0 = Formatter::DEFAULT_ARG,
                       const Formatter::Arg& a1 = Formatter::DEFAULT_ARG,
                       const Formatter::Arg& a2 = Formatter::DEFAULT_ARG,
                       const Formatter::Arg& a3 = Formatter::DEFAULT_ARG,
                       const Formatter::Arg& a4 = Formatter::DEFAULT_ARG,
                       const Formatter::Arg& a5 = Formatter::DEFAULT_ARG,
                       const Formatter::Arg& a6 = Formatter::DEFAULT_ARG,
                       const Formatter::Arg& a7 = Formatter::DEFAULT_ARG,
                       const Formatter::Arg& a8 = Formatter::DEFAULT_ARG,
                       const Formatter::Arg& a9 = Formatter::DEFAULT_ARG);

    // The default text with its placeholders replaced.
    String toString() const;
};

class PEGASUS_COMMON_LINKAGE MessageLoader {
public:
    // The message text for parms (its formatted default text).
    static String getMessage(MessageLoaderParms& parms);
};

PEGASUS_NAMESPACE_END

#endif
