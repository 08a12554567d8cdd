//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ArrayOwners.h: owners of the records the array library allocates.
// Each frees its records with the library's matching call when it goes
// out of scope, on every exit path, exceptions included.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_ArrayOwners_h
#define ZAR_ArrayOwners_h

#include <string.h>

#include <zarapi.h>

// A VLUN query: the criteria set by the caller, the records the array
// answered with.
class ZAR_VlunQuery {
public:
    ZAR_VlunQuery() { memset(&_info, 0, sizeof(_info)); }
    ~ZAR_VlunQuery() { api_freeVLUNs(&_info); }
    ZAR_VlunQuery(const ZAR_VlunQuery&) = delete;
    ZAR_VlunQuery& operator=(const ZAR_VlunQuery&) = delete;

    api_vlunsInfo_t& operator*() { return _info; }
    api_vlunsInfo_t* operator->() { return &_info; }
    api_vlunsInfo_t* get() { return &_info; }

private:
    api_vlunsInfo_t _info;
};

// A view cursor: set up for a walk, released on every exit.
class ZAR_SPCCursor {
public:
    ZAR_SPCCursor() { api_initSPCParamData(&_data); }
    ~ZAR_SPCCursor() { api_freeSPCParamData(&_data); }
    ZAR_SPCCursor(const ZAR_SPCCursor&) = delete;
    ZAR_SPCCursor& operator=(const ZAR_SPCCursor&) = delete;

    api_spc_param_data* get() { return &_data; }

private:
    api_spc_param_data _data;
};

// A list of records of type T and its length, freed by Free.
template <class T, void (*Free)(T*)>
class ZAR_RecordList {
public:
    ZAR_RecordList() : list(0), count(0) {}
    ~ZAR_RecordList()
    {
        if (list)
            Free(list);
    }
    ZAR_RecordList(const ZAR_RecordList&) = delete;
    ZAR_RecordList& operator=(const ZAR_RecordList&) = delete;

    T* list;
    zar_u32 count;
};

typedef ZAR_RecordList<api_hardwareID, api_freeHostPaths> ZAR_HostPathList;
typedef ZAR_RecordList<api_vv_t, api_freeVVs> ZAR_VolumeList;
typedef ZAR_RecordList<api_iSCSIPort_t, api_freeISCSIPorts> ZAR_ISCSIPortList;

// The FC ports of api_getFCPorts, whose answer is also their count (a
// negative count is an error code, with nothing to free).
class ZAR_FCPortList {
public:
    ZAR_FCPortList() : list(0), count(0) {}
    ~ZAR_FCPortList()
    {
        if (list)
            api_freeFCPorts(list, count > 0 ? count : 0);
    }
    ZAR_FCPortList(const ZAR_FCPortList&) = delete;
    ZAR_FCPortList& operator=(const ZAR_FCPortList&) = delete;

    api_FCPort_t* list;
    int count;
};

#endif
