// CIMKeyBinding and CIMObjectPath: instance names, their text form and
// their comparison.

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMValue.h>

#include <atomic>
#include <cstdlib>
#include <limits>
#include <unistd.h>

#include "ObjectPathText.h"

PEGASUS_NAMESPACE_BEGIN

//------------------------------------------------------------------------------
// CIMKeyBinding
//------------------------------------------------------------------------------

struct CIMKeyBindingRep {
    CIMName name;
    String value;
    CIMKeyBinding::Type type = CIMKeyBinding::STRING;
};

CIMKeyBinding::CIMKeyBinding() : _rep(new CIMKeyBindingRep) {}

CIMKeyBinding::CIMKeyBinding(const CIMKeyBinding& x) : _rep(new CIMKeyBindingRep(*x._rep)) {}

CIMKeyBinding::CIMKeyBinding(const CIMName& name, const String& value, Type type)
    : _rep(new CIMKeyBindingRep)
{
    _rep->name = name;
    _rep->value = value;
    _rep->type = type;
}

CIMKeyBinding::CIMKeyBinding(const CIMName& name, const CIMValue& value)
{
    if (value.isArray())
        throw TypeMismatchException();
    Type type;
    switch (value.getType()) {
        case CIMTYPE_BOOLEAN:
            type = BOOLEAN;
            break;
        case CIMTYPE_CHAR16:
        case CIMTYPE_STRING:
        case CIMTYPE_DATETIME:
            type = STRING;
            break;
        case CIMTYPE_REFERENCE:
            type = REFERENCE;
            break;
        case CIMTYPE_OBJECT:
        case CIMTYPE_INSTANCE:
            throw TypeMismatchException();
        default:
            type = NUMERIC;
            break;
    }
    _rep = new CIMKeyBindingRep;
    _rep->name = name;
    _rep->value = value.toString();
    _rep->type = type;
}

CIMKeyBinding::~CIMKeyBinding()
{
    delete _rep;
}

CIMKeyBinding& CIMKeyBinding::operator=(const CIMKeyBinding& x)
{
    *_rep = *x._rep;
    return *this;
}

const CIMName& CIMKeyBinding::getName() const
{
    return _rep->name;
}
void CIMKeyBinding::setName(const CIMName& name)
{
    _rep->name = name;
}
const String& CIMKeyBinding::getValue() const
{
    return _rep->value;
}
void CIMKeyBinding::setValue(const String& value)
{
    _rep->value = value;
}
CIMKeyBinding::Type CIMKeyBinding::getType() const
{
    return _rep->type;
}
void CIMKeyBinding::setType(Type type)
{
    _rep->type = type;
}

namespace {

// Reads text as a real number, all of it.
bool _toReal(const String& text, Real64& x)
{
    CString c = text.getCString();
    const char* s = c;
    if (!*s)
        return false;
    char* end;
    x = std::strtod(s, &end);
    return *end == 0;
}

template <class T>
bool _toInteger(const String& text, T& x)
{
    Sint64 s;
    Uint64 u;
    if (KeyTextToSint64(text, s)) {
        if (s < Sint64(std::numeric_limits<T>::min()) ||
            (s > 0 && Uint64(s) > Uint64(std::numeric_limits<T>::max())))
            return false;
        x = T(s);
        return true;
    }
    if (KeyTextToUint64(text, u)) {
        if (u > Uint64(std::numeric_limits<T>::max()))
            return false;
        x = T(u);
        return true;
    }
    return false;
}

// The binding's text read as a value of type t; false if it cannot be.
bool _convert(const CIMKeyBinding& kb, CIMType t, CIMValue& out)
{
    const String& text = kb.getValue();
    CIMKeyBinding::Type kt = kb.getType();
    try {
        switch (t) {
            case CIMTYPE_BOOLEAN:
                if (kt != CIMKeyBinding::BOOLEAN)
                    return false;
                if (String::equalNoCase(text, "TRUE"))
                    out.set(true);
                else if (String::equalNoCase(text, "FALSE"))
                    out.set(false);
                else
                    return false;
                return true;
            case CIMTYPE_CHAR16:
                if (kt != CIMKeyBinding::STRING || text.size() != 1)
                    return false;
                out.set(text[0]);
                return true;
            case CIMTYPE_STRING:
                if (kt != CIMKeyBinding::STRING)
                    return false;
                out.set(text);
                return true;
            case CIMTYPE_DATETIME:
                if (kt != CIMKeyBinding::STRING)
                    return false;
                out.set(CIMDateTime(text));
                return true;
            case CIMTYPE_REFERENCE:
                if (kt != CIMKeyBinding::REFERENCE)
                    return false;
                out.set(CIMObjectPath(text));
                return true;
            case CIMTYPE_OBJECT:
            case CIMTYPE_INSTANCE:
                return false;
            default:
                break;
        }
        if (kt != CIMKeyBinding::NUMERIC)
            return false;
        switch (t) {
            case CIMTYPE_UINT8: {
                Uint8 x;
                if (!_toInteger(text, x))
                    return false;
                out.set(x);
                return true;
            }
            case CIMTYPE_SINT8: {
                Sint8 x;
                if (!_toInteger(text, x))
                    return false;
                out.set(x);
                return true;
            }
            case CIMTYPE_UINT16: {
                Uint16 x;
                if (!_toInteger(text, x))
                    return false;
                out.set(x);
                return true;
            }
            case CIMTYPE_SINT16: {
                Sint16 x;
                if (!_toInteger(text, x))
                    return false;
                out.set(x);
                return true;
            }
            case CIMTYPE_UINT32: {
                Uint32 x;
                if (!_toInteger(text, x))
                    return false;
                out.set(x);
                return true;
            }
            case CIMTYPE_SINT32: {
                Sint32 x;
                if (!_toInteger(text, x))
                    return false;
                out.set(x);
                return true;
            }
            case CIMTYPE_UINT64: {
                Uint64 x;
                if (!_toInteger(text, x))
                    return false;
                out.set(x);
                return true;
            }
            case CIMTYPE_SINT64: {
                Sint64 x;
                if (!_toInteger(text, x))
                    return false;
                out.set(x);
                return true;
            }
            case CIMTYPE_REAL32: {
                Real64 x;
                if (!_toReal(text, x))
                    return false;
                out.set(Real32(x));
                return true;
            }
            case CIMTYPE_REAL64: {
                Real64 x;
                if (!_toReal(text, x))
                    return false;
                out.set(x);
                return true;
            }
            default:
                return false;
        }
    } catch (Exception&) {
        return false;
    }
}

}  // namespace

Boolean CIMKeyBinding::equal(CIMValue value)
{
    if (value.isArray())
        return false;
    CIMValue converted;
    if (!_convert(*this, value.getType(), converted))
        return false;
    return value.equal(converted);
}

namespace {

// NUMERIC texts compare as numbers when both read as unsigned, else when
// both read as signed; otherwise as text.
bool _numericEqual(const String& a, const String& b)
{
    Uint64 ua, ub;
    if (KeyTextToUint64(a, ua) && KeyTextToUint64(b, ub))
        return ua == ub;
    Sint64 sa, sb;
    if (KeyTextToSint64(a, sa) && KeyTextToSint64(b, sb))
        return sa == sb;
    return String::equal(a, b);
}

bool _referenceEqual(const String& a, const String& b)
{
    try {
        CIMObjectPath pa(a);
        CIMObjectPath pb(b);
        return pa.identical(pb);
    } catch (Exception&) {
        return String::equal(a, b);
    }
}

}  // namespace

Boolean operator==(const CIMKeyBinding& x, const CIMKeyBinding& y)
{
    if (!x.getName().equal(y.getName()) || x.getType() != y.getType())
        return false;
    switch (x.getType()) {
        case CIMKeyBinding::STRING:
            return String::equal(x.getValue(), y.getValue());
        case CIMKeyBinding::BOOLEAN:
            return String::equalNoCase(x.getValue(), y.getValue());
        case CIMKeyBinding::NUMERIC:
            return _numericEqual(x.getValue(), y.getValue());
        case CIMKeyBinding::REFERENCE:
            return _referenceEqual(x.getValue(), y.getValue());
    }
    return false;
}

//------------------------------------------------------------------------------
// CIMObjectPath
//------------------------------------------------------------------------------

// Shared between copies until one of them changes.
struct CIMObjectPathRep {
    std::atomic<Uint32> refs{1};
    String host;
    CIMNamespaceName nameSpace;
    CIMName className;
    Array<CIMKeyBinding> keyBindings;

    CIMObjectPathRep() {}
    CIMObjectPathRep(const CIMObjectPathRep& x)
        : refs(1),
          host(x.host),
          nameSpace(x.nameSpace),
          className(x.className),
          keyBindings(x.keyBindings)
    {
    }
};

namespace {

void _unref(CIMObjectPathRep* r)
{
    if (r->refs.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete r;
}

[[noreturn]] void _malformed(const String& text, const String& reason)
{
    String m(text);
    m.append(", reason:\"");
    m.append(reason);
    m.append(Char16('"'));
    throw MalformedObjectNameException(m);
}

// Sorts by key name, ASCII case-insensitively; equal names keep their order.
void _sortKeys(Array<CIMKeyBinding>& keys)
{
    Uint32 n = keys.size();
    for (Uint32 i = 1; i < n; i++) {
        if (String::compareNoCase(keys[i - 1].getName().getString(),
                                  keys[i].getName().getString()) <= 0)
            continue;
        CIMKeyBinding k = keys[i];
        Uint32 j = i;
        while (j > 0 && String::compareNoCase(keys[j - 1].getName().getString(),
                                              k.getName().getString()) > 0) {
            keys[j] = keys[j - 1];
            j--;
        }
        keys[j] = k;
    }
}

// The keys as a path stores them: sorted, reference values rewritten in
// normal form (an unparsable reference throws MalformedObjectNameException).
Array<CIMKeyBinding> _normalKeys(const Array<CIMKeyBinding>& keys)
{
    Array<CIMKeyBinding> out(keys);
    for (Uint32 i = 0; i < out.size(); i++) {
        if (out[i].getType() == CIMKeyBinding::REFERENCE) {
            CIMObjectPath ref(out[i].getValue());
            out[i].setValue(ref.toString());
        }
    }
    _sortKeys(out);
    return out;
}

void _appendQuoted(String& out, const String& value)
{
    out.append(Char16('"'));
    const Char16* p = value.getChar16Data();
    Uint32 n = value.size();
    Uint32 start = 0;
    for (Uint32 i = 0; i < n; i++) {
        if (p[i] == '\\' || p[i] == '"') {
            out.append(p + start, i - start);
            out.append(Char16('\\'));
            start = i;
        }
    }
    out.append(p + start, n - start);
    out.append(Char16('"'));
}

Uint32 _findFrom(const Char16* p, Uint32 n, Uint32 from, Uint16 c)
{
    for (Uint32 i = from; i < n; i++) {
        if (Uint16(p[i]) == c)
            return i;
    }
    return PEG_NOT_FOUND;
}

// Parses text into rep (whose keys come out sorted and normalised).
void _parse(const String& text, CIMObjectPathRep& rep)
{
    const Char16* p = text.getChar16Data();
    Uint32 n = text.size();
    Uint32 i = 0;
    bool gotHost = false;

    if (n >= 2 && p[0] == '/' && p[1] == '/') {
        Uint32 slash = _findFrom(p, n, 2, '/');
        if (slash == PEG_NOT_FOUND)
            _malformed(text, "host specified, missing namespace");
        String host(p + 2, slash - 2);
        if (!HostIsValid(host))
            _malformed(text, "invalid hostname");
        rep.host = host;
        gotHost = true;
        i = slash + 1;
    }

    // A ':' counts as the namespace end only before the first '.'.
    Uint32 colon = _findFrom(p, n, i, ':');
    Uint32 dot = _findFrom(p, n, i, '.');
    if (colon != PEG_NOT_FOUND && (dot == PEG_NOT_FOUND || colon < dot)) {
        String ns(p + i, colon - i);
        if (!CIMNamespaceName::legal(ns))
            _malformed(text, "invalid namespace name");
        rep.nameSpace = CIMNamespaceName(ns);
        i = colon + 1;
        dot = _findFrom(p, n, i, '.');
    } else if (gotHost) {
        _malformed(text, "host specified, missing namespace");
    }

    Uint32 classEnd = dot == PEG_NOT_FOUND ? n : dot;
    String className(p + i, classEnd - i);
    if (!CIMName::legal(className))
        _malformed(text, String("class name ", className) + " not a legal CIM name");
    rep.className = CIMName(className);
    if (dot == PEG_NOT_FOUND)
        return;

    Array<CIMKeyBinding> keys;
    i = dot + 1;
    while (i < n) {
        Uint32 eq = _findFrom(p, n, i, '=');
        if (eq == PEG_NOT_FOUND)
            _malformed(text, "invalid key-value pair, missing equal sign");
        String keyName(p + i, eq - i);
        if (!CIMName::legal(keyName))
            _malformed(text, String("invalid key-value pair, invalid key name:", keyName));
        i = eq + 1;

        String value;
        CIMKeyBinding::Type type;
        if (i < n && p[i] == '"') {
            i++;
            Uint32 start = i;
            while (i < n && p[i] != '"') {
                if (p[i] == '\\') {
                    value.append(p + start, i - start);
                    i++;
                    if (i >= n || (p[i] != '\\' && p[i] != '"'))
                        _malformed(text, "invalid key-value pair, malformed value");
                    start = i;
                }
                i++;
            }
            if (i >= n)
                _malformed(text, "invalid key-value pair, missing quote in key value");
            value.append(p + start, i - start);
            i++;
            type = CIMKeyBinding::STRING;
            // A quoted object path with keys is a reference.
            if (value.find(Char16('=')) != PEG_NOT_FOUND) {
                try {
                    CIMObjectPath ref(value);
                    if (ref.getKeyBindings().size() > 0) {
                        type = CIMKeyBinding::REFERENCE;
                        value = ref.toString();
                    }
                } catch (Exception&) {
                }
            }
        } else {
            Uint32 start = i;
            while (i < n && p[i] != ',')
                i++;
            value = String(p + start, i - start);
            Uint16 c = start < n ? Uint16(p[start]) : Uint16(0);
            if (c == 'T' || c == 't' || c == 'F' || c == 'f') {
                if (!String::equalNoCase(value, "TRUE") && !String::equalNoCase(value, "FALSE")) {
                    _malformed(text, "invalid key-value pair, value should be TRUE or FALSE");
                }
                value.toUpper();
                type = CIMKeyBinding::BOOLEAN;
            } else {
                if (!KeyTextIsNumber(value))
                    _malformed(text,
                               String("invalid key-value pair, invalid number value ", value));
                type = CIMKeyBinding::NUMERIC;
            }
        }
        keys.append(CIMKeyBinding(CIMName(keyName), value, type));

        if (i < n) {
            if (p[i] != ',')
                _malformed(text,
                           "invalid key-value pair, next key-value pair has to start with comma");
            i++;
        }
    }
    _sortKeys(keys);
    rep.keyBindings = keys;
}

// The canonical text that makeHashCode() hashes.
void _canonical(const CIMObjectPathRep& r, String& out);

void _canonicalValue(const CIMKeyBinding& kb, String& out)
{
    const String& v = kb.getValue();
    switch (kb.getType()) {
        case CIMKeyBinding::STRING:
            out.append(v);
            return;
        case CIMKeyBinding::BOOLEAN: {
            String b(v);
            b.toLower();
            out.append(b);
            return;
        }
        case CIMKeyBinding::NUMERIC: {
            Uint64 u;
            Sint64 s;
            if (KeyTextToUint64(v, u))
                out.appendPrintf("%llu", u);
            else if (KeyTextToSint64(v, s))
                out.appendPrintf("%lld", s);
            else
                out.append(v);
            return;
        }
        case CIMKeyBinding::REFERENCE:
            // Parsable references are handled by _canonical().
            out.append(v);
            return;
    }
}

}  // namespace

CIMObjectPath::CIMObjectPath() : _rep(new CIMObjectPathRep) {}

CIMObjectPath::CIMObjectPath(const CIMObjectPath& x) : _rep(x._rep)
{
    _rep->refs.fetch_add(1, std::memory_order_relaxed);
}

CIMObjectPath::CIMObjectPath(const String& objectName) : _rep(new CIMObjectPathRep)
{
    try {
        _parse(objectName, *_rep);
    } catch (...) {
        delete _rep;
        throw;
    }
}

CIMObjectPath::CIMObjectPath(const String& host, const CIMNamespaceName& nameSpace,
                             const CIMName& className, const Array<CIMKeyBinding>& keyBindings)
    : _rep(new CIMObjectPathRep)
{
    try {
        set(host, nameSpace, className, keyBindings);
    } catch (...) {
        delete _rep;
        throw;
    }
}

CIMObjectPath::~CIMObjectPath()
{
    _unref(_rep);
}

CIMObjectPath& CIMObjectPath::operator=(const CIMObjectPath& x)
{
    if (x._rep != _rep) {
        x._rep->refs.fetch_add(1, std::memory_order_relaxed);
        _unref(_rep);
        _rep = x._rep;
    }
    return *this;
}

// Replaces _rep by an unshared copy of itself if it is shared.
static CIMObjectPathRep* _own(CIMObjectPathRep* r)
{
    if (r->refs.load(std::memory_order_acquire) == 1)
        return r;
    CIMObjectPathRep* n = new CIMObjectPathRep(*r);
    _unref(r);
    return n;
}

void CIMObjectPath::clear()
{
    CIMObjectPathRep* n = new CIMObjectPathRep;
    _unref(_rep);
    _rep = n;
}

void CIMObjectPath::set(const String& host, const CIMNamespaceName& nameSpace,
                        const CIMName& className, const Array<CIMKeyBinding>& keyBindings)
{
    Array<CIMKeyBinding> keys = _normalKeys(keyBindings);
    setHost(host);
    _rep = _own(_rep);
    _rep->nameSpace = nameSpace;
    _rep->className = className;
    _rep->keyBindings = keys;
}

void CIMObjectPath::set(const String& objectName)
{
    CIMObjectPathRep* n = new CIMObjectPathRep;
    try {
        _parse(objectName, *n);
    } catch (...) {
        delete n;
        throw;
    }
    _unref(_rep);
    _rep = n;
}

CIMObjectPath& CIMObjectPath::operator=(const String& objectName)
{
    set(objectName);
    return *this;
}

const String& CIMObjectPath::getHost() const
{
    return _rep->host;
}

void CIMObjectPath::setHost(const String& host)
{
    if (host.size() != 0 && !HostIsValid(host)) {
        // The local system's own name is accepted as it is.
        char local[256];
        bool isLocal = gethostname(local, sizeof(local)) == 0 &&
                       (local[sizeof(local) - 1] = 0, String::equalNoCase(host, String(local)));
        if (!isLocal) {
            String m(host);
            m.append(", reason:\"invalid hostname\"");
            throw MalformedObjectNameException(m);
        }
    }
    _rep = _own(_rep);
    _rep->host = host;
}

const CIMNamespaceName& CIMObjectPath::getNameSpace() const
{
    return _rep->nameSpace;
}

void CIMObjectPath::setNameSpace(const CIMNamespaceName& nameSpace)
{
    _rep = _own(_rep);
    _rep->nameSpace = nameSpace;
}

const CIMName& CIMObjectPath::getClassName() const
{
    return _rep->className;
}

void CIMObjectPath::setClassName(const CIMName& className)
{
    _rep = _own(_rep);
    _rep->className = className;
}

const Array<CIMKeyBinding>& CIMObjectPath::getKeyBindings() const
{
    return _rep->keyBindings;
}

void CIMObjectPath::setKeyBindings(const Array<CIMKeyBinding>& keyBindings)
{
    Array<CIMKeyBinding> keys = _normalKeys(keyBindings);
    _rep = _own(_rep);
    _rep->keyBindings = keys;
}

String CIMObjectPath::toString() const
{
    String s;
    const CIMObjectPathRep& r = *_rep;
    if (r.host.size() != 0) {
        s.append("//");
        s.append(r.host);
        s.append(Char16('/'));
    }
    if (!r.nameSpace.isNull() || r.host.size() != 0) {
        s.append(r.nameSpace.getString());
        s.append(Char16(':'));
    }
    s.append(r.className.getString());
    Uint32 n = r.keyBindings.size();
    for (Uint32 i = 0; i < n; i++) {
        const CIMKeyBinding& kb = r.keyBindings[i];
        s.append(Char16(i == 0 ? '.' : ','));
        s.append(kb.getName().getString());
        s.append(Char16('='));
        CIMKeyBinding::Type t = kb.getType();
        if (t == CIMKeyBinding::STRING || t == CIMKeyBinding::REFERENCE)
            _appendQuoted(s, kb.getValue());
        else
            s.append(kb.getValue());
    }
    return s;
}

Boolean CIMObjectPath::identical(const CIMObjectPath& x) const
{
    const CIMObjectPathRep& a = *_rep;
    const CIMObjectPathRep& b = *x._rep;
    if (&a == &b)
        return true;
    if (!String::equalNoCase(a.host, b.host) || !a.nameSpace.equal(b.nameSpace) ||
        !a.className.equal(b.className))
        return false;
    Uint32 n = a.keyBindings.size();
    if (n != b.keyBindings.size())
        return false;
    for (Uint32 i = 0; i < n; i++) {
        if (!(a.keyBindings[i] == b.keyBindings[i]))
            return false;
    }
    return true;
}

namespace {

void _canonical(const CIMObjectPathRep& r, String& out)
{
    String h(r.host);
    h.toLower();
    out.append(h);
    out.append(Char16('/'));
    String ns(r.nameSpace.getString());
    ns.toLower();
    out.append(ns);
    out.append(Char16(':'));
    String cls(r.className.getString());
    cls.toLower();
    out.append(cls);
    for (Uint32 i = 0; i < r.keyBindings.size(); i++) {
        const CIMKeyBinding& kb = r.keyBindings[i];
        String name(kb.getName().getString());
        name.toLower();
        out.append(Char16(i == 0 ? '.' : ','));
        out.append(name);
        out.appendPrintf("=%d:", int(kb.getType()));
        if (kb.getType() == CIMKeyBinding::REFERENCE) {
            try {
                CIMObjectPath ref(kb.getValue());
                // An inner path contributes its own hash, which follows
                // the same rules.
                out.appendPrintf("{%u}", ref.makeHashCode());
                continue;
            } catch (Exception&) {
            }
        }
        _canonicalValue(kb, out);
    }
}

}  // namespace

Uint32 CIMObjectPath::makeHashCode() const
{
    String c;
    _canonical(*_rep, c);
    // FNV-1a over the code units.
    Uint32 h = 2166136261u;
    const Char16* p = c.getChar16Data();
    for (Uint32 i = 0; i < c.size(); i++) {
        h ^= Uint16(p[i]);
        h *= 16777619u;
    }
    return h;
}

Boolean operator==(const CIMObjectPath& x, const CIMObjectPath& y)
{
    return x.identical(y);
}

Boolean operator!=(const CIMObjectPath& x, const CIMObjectPath& y)
{
    return !x.identical(y);
}

PEGASUS_NAMESPACE_END
