//%/////////////////////////////////////////////////////////////////////////////
// LanguageTag: one RFC 3066 language tag such as "en-US", as carried by the
// Accept-Language and Content-Language headers of a CIM operation.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_LanguageTag_h
#define Pegasus_LanguageTag_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_COMMON_LINKAGE LanguageTag {
public:
    // An empty tag.
    LanguageTag();
    // Holds the given tag text as is (no validation in this subset).
    LanguageTag(const String& languageTagString);
    LanguageTag(const LanguageTag& languageTag);
    ~LanguageTag();
    LanguageTag& operator=(const LanguageTag& languageTag);

    // The tag text, e.g. "en-US".
    String toString() const;

    // Tags compare ASCII case-insensitively ("en-us" equals "EN-US").
    Boolean operator==(const LanguageTag& languageTag) const;
    Boolean operator!=(const LanguageTag& languageTag) const;

private:
    String _tag;
};

PEGASUS_NAMESPACE_END

#endif
