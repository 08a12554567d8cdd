//%/////////////////////////////////////////////////////////////////////////////
// ContentLanguageList: the languages of a message or response, in order
// (a Content-Language header). Value semantics.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_ContentLanguageList_h
#define Pegasus_ContentLanguageList_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/LanguageTag.h>
#include <Pegasus/Common/Array.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_COMMON_LINKAGE ContentLanguageList {
public:
    // An empty list.
    ContentLanguageList();
    ContentLanguageList(const ContentLanguageList& contentLanguages);
    ~ContentLanguageList();
    ContentLanguageList& operator=(const ContentLanguageList& contentLanguages);

    // The tag at index; throws IndexOutOfBoundsException.
    LanguageTag getLanguageTag(Uint32 index) const;

    Uint32 size() const;

    // Appends languageTag.
    void append(const LanguageTag& languageTag);

    // Removes the tag at index; throws IndexOutOfBoundsException.
    void remove(Uint32 index);

    // Index of languageTag, or PEG_NOT_FOUND.
    Uint32 find(const LanguageTag& languageTag) const;

    void clear();

    // Same tags in the same order.
    Boolean operator==(const ContentLanguageList& contentLanguages) const;
    Boolean operator!=(const ContentLanguageList& contentLanguages) const;

private:
    Array<LanguageTag> _tags;
};

PEGASUS_NAMESPACE_END

#endif
