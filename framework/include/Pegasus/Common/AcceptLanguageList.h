//%/////////////////////////////////////////////////////////////////////////////
// AcceptLanguageList: the languages a client accepts, each with a quality
// value, kept in order of descending quality (an Accept-Language header).
// Value semantics.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_AcceptLanguageList_h
#define Pegasus_AcceptLanguageList_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/LanguageTag.h>
#include <Pegasus/Common/Array.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_COMMON_LINKAGE AcceptLanguageList {
public:
    // An empty list.
    AcceptLanguageList();
    AcceptLanguageList(const AcceptLanguageList& acceptLanguages);
    ~AcceptLanguageList();
    AcceptLanguageList& operator=(const AcceptLanguageList& acceptLanguages);

    // The tag at index; throws IndexOutOfBoundsException.
    LanguageTag getLanguageTag(Uint32 index) const;

    // The quality value at index; throws IndexOutOfBoundsException.
    Real32 getQualityValue(Uint32 index) const;

    Uint32 size() const;

    // Inserts languageTag after every tag of equal or higher quality; a
    // quality outside 0..1 throws Exception.
    void insert(const LanguageTag& languageTag, Real32 qualityValue);

    // Removes the tag at index; throws IndexOutOfBoundsException.
    void remove(Uint32 index);

    // Index of languageTag, or PEG_NOT_FOUND.
    Uint32 find(const LanguageTag& languageTag) const;

    void clear();

    // Same tags with the same qualities in the same order.
    Boolean operator==(const AcceptLanguageList& acceptLanguages) const;
    Boolean operator!=(const AcceptLanguageList& acceptLanguages) const;

private:
    Array<LanguageTag> _tags;
    Array<Real32> _qualities;
};

PEGASUS_NAMESPACE_END

#endif
