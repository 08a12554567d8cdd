// LanguageTag: one language tag, compared ASCII case-insensitively.
#include <Pegasus/Common/LanguageTag.h>

PEGASUS_NAMESPACE_BEGIN

LanguageTag::LanguageTag() {}

LanguageTag::LanguageTag(const String& languageTagString) : _tag(languageTagString) {}

LanguageTag::LanguageTag(const LanguageTag& languageTag) : _tag(languageTag._tag) {}

LanguageTag::~LanguageTag() {}

LanguageTag& LanguageTag::operator=(const LanguageTag& languageTag)
{
    _tag = languageTag._tag;
    return *this;
}

String LanguageTag::toString() const
{
    return _tag;
}

Boolean LanguageTag::operator==(const LanguageTag& languageTag) const
{
    return String::equalNoCase(_tag, languageTag._tag);
}

Boolean LanguageTag::operator!=(const LanguageTag& languageTag) const
{
    return !operator==(languageTag);
}

PEGASUS_NAMESPACE_END
