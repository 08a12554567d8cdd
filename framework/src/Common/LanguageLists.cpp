// ContentLanguageList and AcceptLanguageList.

#include <Pegasus/Common/ContentLanguageList.h>
#include <Pegasus/Common/AcceptLanguageList.h>
#include <Pegasus/Common/Exception.h>

PEGASUS_NAMESPACE_BEGIN

ContentLanguageList::ContentLanguageList() {}

ContentLanguageList::ContentLanguageList(const ContentLanguageList& x) : _tags(x._tags) {}

ContentLanguageList::~ContentLanguageList() {}

ContentLanguageList& ContentLanguageList::operator=(const ContentLanguageList& x)
{
    _tags = x._tags;
    return *this;
}

LanguageTag ContentLanguageList::getLanguageTag(Uint32 index) const
{
    return _tags[index];
}

Uint32 ContentLanguageList::size() const
{
    return _tags.size();
}

void ContentLanguageList::append(const LanguageTag& languageTag)
{
    _tags.append(languageTag);
}

void ContentLanguageList::remove(Uint32 index)
{
    _tags.remove(index);
}

Uint32 ContentLanguageList::find(const LanguageTag& languageTag) const
{
    for (Uint32 i = 0; i < _tags.size(); i++) {
        if (_tags[i] == languageTag)
            return i;
    }
    return PEG_NOT_FOUND;
}

void ContentLanguageList::clear()
{
    _tags.clear();
}

Boolean ContentLanguageList::operator==(const ContentLanguageList& x) const
{
    if (_tags.size() != x._tags.size())
        return false;
    for (Uint32 i = 0; i < _tags.size(); i++) {
        if (_tags[i] != x._tags[i])
            return false;
    }
    return true;
}

Boolean ContentLanguageList::operator!=(const ContentLanguageList& x) const
{
    return !(*this == x);
}

AcceptLanguageList::AcceptLanguageList() {}

AcceptLanguageList::AcceptLanguageList(const AcceptLanguageList& x)
    : _tags(x._tags), _qualities(x._qualities)
{
}

AcceptLanguageList::~AcceptLanguageList() {}

AcceptLanguageList& AcceptLanguageList::operator=(const AcceptLanguageList& x)
{
    _tags = x._tags;
    _qualities = x._qualities;
    return *this;
}

LanguageTag AcceptLanguageList::getLanguageTag(Uint32 index) const
{
    return _tags[index];
}

Real32 AcceptLanguageList::getQualityValue(Uint32 index) const
{
    return _qualities[index];
}

Uint32 AcceptLanguageList::size() const
{
    return _tags.size();
}

void AcceptLanguageList::insert(const LanguageTag& languageTag, Real32 qualityValue)
{
    if (!(qualityValue >= 0.0f && qualityValue <= 1.0f))
        throw Exception("invalid quality value for an accept language");
    Uint32 i = 0;
    while (i < _qualities.size() && _qualities[i] >= qualityValue)
        i++;
    _tags.insert(i, languageTag);
    _qualities.insert(i, qualityValue);
}

void AcceptLanguageList::remove(Uint32 index)
{
    _tags.remove(index);
    _qualities.remove(index);
}

Uint32 AcceptLanguageList::find(const LanguageTag& languageTag) const
{
    for (Uint32 i = 0; i < _tags.size(); i++) {
        if (_tags[i] == languageTag)
            return i;
    }
    return PEG_NOT_FOUND;
}

void AcceptLanguageList::clear()
{
    _tags.clear();
    _qualities.clear();
}

Boolean AcceptLanguageList::operator==(const AcceptLanguageList& x) const
{
    if (_tags.size() != x._tags.size())
        return false;
    for (Uint32 i = 0; i < _tags.size(); i++) {
        if (_tags[i] != x._tags[i] || _qualities[i] != x._qualities[i])
            return false;
    }
    return true;
}

Boolean AcceptLanguageList::operator!=(const AcceptLanguageList& x) const
{
    return !(*this == x);
}

PEGASUS_NAMESPACE_END
