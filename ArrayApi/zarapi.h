/*
 * zarapi.h - the array management interface.
 *
 * Everything a management module knows about the storage array, and every
 * change it makes to it, goes through the operations declared here.  The
 * records below cross the library boundary by value and have a fixed layout
 * (sizes and offsets are checked at the end of this file for x86-64).
 *
 * Conventions:
 *  - Text fields are fixed character arrays, always terminated inside the
 *    array.  Callers copy at most (size - 1) characters and terminate.
 *  - Every query and change must be made between a successful cim_sem_wait()
 *    and its cim_sem_post().  The library does not take the semaphore itself.
 *  - Changing calls carry an event-parameter block (api_evtparam_t) that the
 *    array records in its audit log; it may be NULL, in which case the change
 *    is recorded against an anonymous caller.
 *  - Memory returned by a query belongs to the caller and is released with the
 *    matching free call (api_freeVLUNs, api_freeHostPaths, api_freeFCPorts,
 *    ...), never with free().
 *  - Results: 0 is success.  Changing calls return the array error code
 *    (API_E_*) and, where they take one, fill the status record or the error
 *    text buffer with the array's message.
 *
 * A process opens the library once (api_zarOpenForCimserver(NULL)); the
 * other calls open it on demand when that has not happened yet.
 */
#ifndef ZARAPI_H
#define ZARAPI_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------------ */
/* Basic types and constants                                                */
/* ------------------------------------------------------------------------ */

typedef uint8_t zar_u8;
typedef uint16_t zar_u16;
typedef uint32_t zar_u32;
typedef uint64_t zar_u64;

/* A port position: node * 128 + slot * 8 + port (node 0-7, slot 0-9,
 * port 1-4).  Text form "N:S:P". */
typedef zar_u16 lpid_t;

/* No port given (also "any port" in queries). */
#define API_PORT_NONE ((lpid_t)0xFFFC)
/* Result of a port lookup whose name held the array's invalid WWN marker. */
#define API_PORT_NOT_FOUND ((lpid_t)0xFFF6)
/* The invalid / not-given WWN marker (the 64-bit form of -10). */
#define API_WWN_NONE ((zar_u64)0xFFFFFFFFFFFFFFF6ULL)

/* Automatic LUN values: the array chooses the LUN.  Both are accepted. */
#define API_LUN_AUTO ((zar_u32)0xFFFFFFFBU)
#define API_LUN_AUTO_24 ((zar_u32)0x00FFFFFFU)
/* Highest LUN the array hands out or accepts. */
#define API_LUN_MAX ((zar_u32)16383U)

/* The vendor's iSCSI qualified-name prefix of the array's own target
 * ports (25 characters).  A target port's name is this prefix followed by
 * 16 hexadecimal digits that carry node, slot and port at bits 56, 52
 * and 48, like a Fibre Channel port WWN. */
#define API_ISCSI_VENDOR_PREFIX "iqn.2004-07.net.zararray:"
#define API_ISCSI_VENDOR_PREFIX_LEN 25

/* Host-set names appear in host lists and VLUN records with this prefix
 * ("set:" + the set's name); hosts and host sets share one ID space. */
#define API_HOSTSET_PREFIX "set:"

/* Host persona used for generic hosts. */
#define API_PERSONA_GENERIC 2U

/* The volAccess value that marks the records of a default view
 * (device identifier "PP:N:S:P:default") in SPC query answers. */
#define API_VOL_ACCESS_DEFAULT_VIEW 4

/* VLUN (export) kinds; also the view type codes of device identifiers. */
#define API_VLUN_MATCHED_SET 1U  /* "MS:N:S:P:hostID" host through one port */
#define API_VLUN_HOST_SEES 2U    /* "HS:hostID"       host through any port */
#define API_VLUN_HOST_SET 3U     /* "HSet:setID"      host set, any port */
#define API_VLUN_PORT_PRESENT 4U /* "PP:N:S:P"       any host, one port */

/* Bit of the policy word: one host per hardware ID when creating a view. */
#define API_POLICY_ONE_HOST_PER_HWID 0x4U

/* Sizes of text buffers the callers pass. */
#define API_ERRTEXT_LEN 513
#define API_NAME_LEN 32
#define API_ISCSI_NAME_LEN 224
#define API_DEVICE_ID_LEN 65

/* ------------------------------------------------------------------------ */
/* Enumerations                                                             */
/* ------------------------------------------------------------------------ */

typedef enum port_type {
    PORT_TYPE_UNKNOWN = 0,
    PORT_TYPE_FC = 1,
    PORT_TYPE_ISCSI = 2,
    PORT_TYPE_SAS = 3
} port_type_t;

typedef enum api_vol_mode {
    VOL_MODE_UNKNOWN = 0,
    VOL_MODE_READ = 1,
    VOL_MODE_WRITE = 2,
    VOL_MODE_READWRITE = 3,
    /* Not an access mode: the mark of a default view's records
     * (API_VOL_ACCESS_DEFAULT_VIEW). Declared here so that the value lies
     * inside the enumeration's range. */
    VOL_MODE_DEFAULT_VIEW = 4
} api_vol_mode_t;

typedef enum api_port_status {
    PORT_CONFIG_WAIT = 0,
    PORT_ALPA_WAIT = 1,
    PORT_LOGIN_WAIT = 2,
    PORT_OK = 3,
    PORT_LOSS_SYNC = 4,
    PORT_ERROR = 5,
    PORT_XXX = 6,
    PORT_NONPARTICIPATE = 7,
    PORT_COREDUMP = 8,
    PORT_OFFLINE = 9,
    PORT_FWDEAD = 10,
    PORT_IDLE_FOR_RESET = 11,
    PORT_DHCP_IN_PROGRESS = 12,
    PORT_PENDING_RESET = 13,
    PORT_UNKNOWN = 99
} api_port_status_t;

typedef enum api_ip_addr_e {
    API_IP_MEM_ALLOCATION_ERROR = -5,
    API_IPV4_INVALID = -4,
    API_IPV6_INVALID = -3,
    API_IPV6_IPV4_MAPPING_ERROR = -2,
    API_IP_INVALID = -1,
    API_IP_CONVERSION_ERROR = 0,
    API_IPV4_OK = 2,
    API_IPV6_OK = 10
} api_ip_addr_e;

/* Array error codes.  The texts are those of api_getErrorText. */
enum api_error_code {
    API_E_OK = 0,
    API_E_FAILED = 1,            /* "Internal error of the array" */
    API_E_NOT_OPEN = 2,          /* "Array library is not open" */
    API_E_INVALID_ARG = 3,       /* invalid argument: bad or too long name, bad value */
    API_E_NO_MEMORY = 12,        /* "Out of memory" */
    API_E_EXISTS = 21,           /* the name or initiator is already in use */
    API_E_SEM_TIMEOUT = 32,      /* "Semaphore Timed-Out" */
    API_E_VV_BUSY = 74,          /* volume is busy (exported or a task runs on it) */
    API_E_PORT_INVALID = 1032,   /* unknown port or not a usable target port */
    API_E_HOST_NOT_FOUND = 1100, /* host does not exist */
    API_E_HOSTSET_NOT_FOUND = 1101,
    API_E_VLUN_NOT_FOUND = 1102,
    API_E_HOST_EXPORTED = 1103,  /* host still has exports */
    API_E_PATH_NOT_FOUND = 1104, /* initiator path not in that host */
    API_E_PATH_IN_USE = 1105,    /* initiator belongs to another host */
    API_E_VLUN_EXISTS = 1106,    /* volume already exported to that target */
    API_E_DOMAIN = 1107,         /* volume and host are in different domains */
    API_E_ACCESS_DENIED = 1108,  /* user unknown, disabled or not allowed */
    API_E_USER_NOT_FOUND = 1109,
    API_E_PORT_EXPORTED = 1110, /* port still carries exports */
    API_E_VV_NOT_FOUND = 1119,  /* volume does not exist */
    API_E_LUN_INVALID = 1181    /* LUN out of range or already in use */
};

/* ------------------------------------------------------------------------ */
/* Records                                                                  */
/* ------------------------------------------------------------------------ */

/* Status record: an error code and its text.  Initialise with
 * api_initStatus; set with errinfo_set_str; read with api_getErrorText. */
typedef struct errinfo {
    int code;
    char text[512];
} errinfo_t;
typedef errinfo_t api_status_t;

/* One VLUN (an export of a volume under a LUN), or one view in the answers
 * of the SPC queries (764 bytes). */
typedef struct vlun {
    char deviceID[65];        /* the view's device identifier */
    char vvname[32];          /* volume name */
    char vvwwn[33];           /* volume WWN text, 32 hexadecimal digits */
    char hostname[32];        /* host name ("set:NAME" for a host set), empty
                                 for a port-present export */
    zar_u32 hostID;           /* host (or host set) number */
    char hostwwn[17];         /* a Fibre Channel WWN of the host, 16 hex digits */
    char hostiscsiname[225];  /* an iSCSI name of the host */
    zar_u32 lun;              /* LUN; 0 in per-view records */
    zar_u32 accessPriority;   /* the VLUN kind / view type code (1 to 4) */
    api_vol_mode_t volAccess; /* volume access mode; API_VOL_ACCESS_DEFAULT_VIEW
                                 in records of a default view */
    char parentDeviceID[65];  /* device identifier of the parent view: the
                                 port-present view for a default view, else
                                 the view itself */
    lpid_t port;              /* target port, API_PORT_NONE for HS and HSet */
    char portwwn[17];         /* target port WWN text (Fibre Channel) */
    char portsasaddr[17];     /* target port SAS address text */
    char portiscsiname[225];  /* target port iSCSI name */
    port_type_t hporttype;    /* PORT_TYPE_FC or PORT_TYPE_ISCSI */
    zar_u8 isTemplate;        /* non-zero: no active VLUN (a dormant view) */
    zar_u8 isempty_vvset;     /* non-zero: template over an empty volume set */
    zar_u32 hostIndex;        /* number of the host or host set, 0 for a
                                 port-present view */
} vlun;
typedef vlun api_vlun_t;

/* Query and answer block of the VLUN and SPC queries.  A criterion takes
 * part only when its flag is set.  Zero it before use. */
typedef struct api_vlunsInfo {
    char vvname[32];   /* volume name or volume WWN text */
    char hostname[32]; /* host name, or "set:NAME" for a host set */
    zar_u32 lun;
    lpid_t port;
    zar_u32 vluntype; /* API_VLUN_* */
    unsigned int vvnameIsSet : 1;
    unsigned int hostnameIsSet : 1;
    unsigned int lunIsSet : 1;
    unsigned int portIsSet : 1;
    unsigned int vluntypeIsSet : 1;
    unsigned int spare : 3;
    zar_u32 count; /* answer: number of records */
    vlun* vluns;   /* answer: records, released by api_freeVLUNs */
} api_vlunsInfo_t;

/* One initiator path (392 bytes). */
typedef struct api_HostPath {
    lpid_t port;      /* target port it is logged in on, or API_PORT_NONE */
    port_type_t type; /* PORT_TYPE_FC or PORT_TYPE_ISCSI */
    union {
        zar_u64 wwn; /* port WWN of a Fibre Channel initiator */
        zar_u8 wwnBytes[8];
    };
    union {
        zar_u64 nodeWwn; /* node WWN of a Fibre Channel initiator */
        zar_u8 nodeWwnBytes[8];
    };
    zar_u64 sas_addr;
    char iscsiName[224]; /* iSCSI name of an iSCSI initiator */
    zar_u32 ipaddr;      /* IPv4 address of an iSCSI initiator, network order */
    char hbafirmver[32];
    char hbavendor[32];
    char hbamodel[32];
    char hbadrvver[32];
    zar_u8 hostspeed; /* link speed in Gbit/s */
} api_HostPath;
typedef api_HostPath api_HostPath_t;

/* One entry of the host-path list (432 bytes). */
typedef struct api_hardwareID {
    char hostName[32]; /* empty when the path belongs to no host */
    zar_u32 hostpersona;
    api_HostPath_t pathInfo;
} api_hardwareID;

/* A Fibre Channel target port. */
typedef struct api_FCPort {
    char elementName[32]; /* "FC port N:S:P" */
    api_port_status_t operationalStatus;
    char deviceID[65]; /* the port's position text "N:S:P" */
    zar_u64 portWWN;
    zar_u64 sasAddr;
    zar_u32 speed;    /* current speed, Gbit/s */
    zar_u32 maxSpeed; /* highest supported speed, Gbit/s */
    lpid_t portPos;   /* position */
    zar_u8 loopID;
    zar_u8 alpa;
    zar_u64 nodeWWN;
    port_type_t portType; /* always PORT_TYPE_FC here */
    zar_u32 fullDuplex;
    zar_u32 supportedSpeeds; /* bit n set: 2^n Gbit/s supported */
    zar_u32 topology;        /* 1 point-to-point, 2 loop */
    zar_u32 protocol;        /* 1 SCSI over FC */
    zar_u32 configMode;      /* 1 target, 2 initiator, 3 peer */
    zar_u32 connectionType;
    zar_u32 options;
    char sfpVendor[32];
    char sfpPartNumber[32];
    char* connectedTo; /* WWN text of the attached switch port, or "" */
} api_FCPort_t;

/* An iSCSI target port. */
typedef struct api_iSCSIPort {
    char elementName[32]; /* "iSCSI port N:S:P" */
    api_port_status_t operationalStatus;
    char deviceID[65];   /* the port's position text "N:S:P" */
    lpid_t portID;       /* position */
    char iscsiName[224]; /* prefix + 16 hexadecimal digits */
    zar_u32 ipaddr;      /* IPv4 address, network order */
    char ipText[46];     /* the same as text */
    zar_u32 tcpPort;     /* normally 3260 */
    zar_u32 speed;       /* Gbit/s */
} api_iSCSIPort_t;

/* One host or host set of the host list. */
typedef struct api_host {
    zar_u32 hostID;    /* number; hosts and host sets share one ID space */
    char name[32];     /* host name, or "set:NAME" for a host set */
    zar_u32 persona;   /* 0 for a host set */
    char domain[32];   /* "-" when none */
    zar_u32 pathCount; /* initiator paths (member hosts for a set) */
    zar_u8 isSet;      /* non-zero for a host set */
} api_host_t;

/* Changes to a host for api_setHost: only fields whose mark is set apply.
 * newName carries a name longer than the array allows, so that the array
 * itself judges it. */
typedef struct api_host_change {
    char newName[256];
    zar_u32 persona;
    char domain[32];
    zar_u8 newNameIsSet;
    zar_u8 personaIsSet;
    zar_u8 domainIsSet;
} api_host_change_t;

/* One volume. */
typedef struct api_vv {
    zar_u32 id;           /* volume number */
    char elementName[32]; /* the user's volume name */
    char name[33];        /* WWN text, 32 upper-case hexadecimal digits */
    api_vol_mode_t access;
    char domain[32]; /* "-" when none */
    zar_u64 sizeMiB;
    zar_u32 vlunCount; /* exports (templates) of the volume */
    zar_u8 busy;       /* a task is running on it */
} api_vv_t;

/* One name, as in volume name tables. */
typedef struct api_name {
    char name[32];
} api_name_t;

/* The system's addresses.  dual_flag: 0 none, 1 IPv4 only, 3 IPv4 and
 * IPv6, 4 IPv6 only; a value above 2 means that ipv6_addr holds the
 * system's IPv6 address (ipv4_addr is 0 when there is no IPv4 address). */
typedef struct _api_ipaddr_t {
    int dual_flag;
    zar_u32 ipv4_addr; /* network order */
    zar_u8 ipv6_addr[16];
} _api_ipaddr_t;
typedef _api_ipaddr_t api_ipaddr_t;

/* Event-parameter block: who changes what (484 bytes). */
typedef struct _api_evtparam_t {
    int cb_code;
    char user[32];
    char addr[46];    /* client address */
    char method[128]; /* class name, ":" and method name */
    char inst_op[16];
    char inst_param[256];
} _api_evtparam_t;
typedef _api_evtparam_t api_evtparam_t;

/* Cursor of the chunked SPC query.  Owned by the caller (usually on the
 * stack); set up with api_initSPCParamData, released with
 * api_freeSPCParamData.  Its fields are the library's. */
typedef struct api_spc_param_data {
    zar_u32 magic;
    zar_u32 started;
    zar_u32 done;
    zar_u32 kind; /* last view delivered: kind, port, owner, sub */
    zar_u32 port;
    zar_u32 sub;
    zar_u64 owner;
    zar_u64 delivered; /* records delivered so far */
} api_spc_param_data;

/* Volume query filter (see api_getvv_filter_init). */
typedef struct api_vv_filter {
    zar_u32 magic;
    zar_u32 capacity;
    zar_u32 count;
    void* terms;
} api_vv_filter_t;

/* Filter kinds of api_getvv_filter_add. */
#define API_VV_FILTER_ID 1        /* decimal volume number */
#define API_VV_FILTER_NAME 2      /* one volume name */
#define API_VV_FILTER_DOMAIN 3    /* domain name ("-" for none) */
#define API_VV_FILTER_NAME_LIST 4 /* volume names separated by "|" */
#define API_VV_FILTER_WWN_LIST 5  /* volume WWN texts separated by "|" */

/* Identity and configuration of the system. */
typedef struct api_sysinfo {
    char name[32];     /* system name (no dots) */
    char hostName[64]; /* management host name */
    char model[32];
    char serial[32];
    zar_u32 systemID;
    int systemType;
    zar_u32 nodesAlive;
    zar_u32 nodesTotal;
    zar_u8 quadPort; /* non-zero when nodes carry four ports per slot */
    zar_u32 policy;  /* the policy word (API_POLICY_*) */
} api_sysinfo_t;

/* ------------------------------------------------------------------------ */
/* Connection, privilege, serialisation, logging                            */
/* ------------------------------------------------------------------------ */

/* With user NULL: opens the library's process-wide connection to the array
 * (once; later calls are cheap) and returns 0 on success.  With a user
 * name: opens if needed and returns 0 when that user exists, is enabled and
 * may use the array (any role), non-zero otherwise.  The OS user name of the
 * calling process is the CIM server's own principal: always allowed. */
int api_zarOpenForCimserver(const char* user);

/* Decides whether user may run the named operation, a lower-case text such
 * as "zar_controllerconfigurationservice.exposepaths".  Returns 0 allowed,
 * 1 when the user is unknown or disabled, 2 when the user's role is too
 * low, 3 when the rules do not know the operation.  The OS user name of the
 * calling process (the CIM server's own principal) has the super role.  The
 * check is recorded in the log with the client address. */
int api_authorizeCIMUser(const char* user, const char* clientAddress, const char* operation);

/* Takes the process-wide semaphore that serialises calls into the
 * library.  Returns 0 when taken, non-zero when the wait timed out (then
 * the semaphore is not held and must not be posted). */
int cim_sem_wait(void);

/* Releases the semaphore taken by cim_sem_wait. */
void cim_sem_post(void);

/* Writes one log line when level is at most the log threshold (levels: 1
 * fatal, 2 error, 3 warning, 4 trace).  printf-style; lines are written
 * whole, thread-safe. */
void log_message(int level, const char* format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 2, 3)))
#endif
    ;

/* Writes the message to the log and standard error, then aborts the
 * process. */
void zar_panic(const char* format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 1, 2), noreturn))
#endif
    ;

/* Writes the message to standard error and the log without raising an
 * array event. */
void zar_print_no_evt(const char* format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 1, 2)))
#endif
    ;

/* ------------------------------------------------------------------------ */
/* Status records and error texts                                           */
/* ------------------------------------------------------------------------ */

/* Clears a status record (code 0, empty text). */
void api_initStatus(api_status_t* status);

/* Sets code and text of a status record (text cut to 511 characters). */
void errinfo_set_str(api_status_t* status, int code, const char* text);

/* Copies the status text, with a final line break, into buffer (size
 * bytes, always terminated).  An empty text yields the standard text of
 * the code.  Returns the status code. */
int api_getErrorText(char* buffer, int size, const api_status_t* status);

/* As api_getErrorText, without the final line break. */
int api_getErrorTextNoNL(char* buffer, int size, const api_status_t* status);

/* The standard text of an array error code, without a line break; a
 * static text, "Unknown error" for a code the array does not use. */
const char* api_errorCodeText(int code);

/* ------------------------------------------------------------------------ */
/* Views and VLUNs                                                          */
/* ------------------------------------------------------------------------ */

/* One record per exported LU (VLUN template) with its view's device
 * identifier, for the templates that match the set criteria.  A
 * port-present export gives a second record for the port's default view
 * (volAccess API_VOL_ACCESS_DEFAULT_VIEW).  Fills info->count and
 * info->vluns; returns 0 or an array error code. */
int api_getSCSIProtocolControllers(api_vlunsInfo_t* info);

/* Sets up a cursor for api_getSCSIProtocolControllers_chunk.  Returns 0. */
int api_initSPCParamData(api_spc_param_data* cursor);

/* The next chunk of at most chunk view records (one record per view, in a
 * stable order; chunk 0 means all that remain), for the views that match
 * the criteria of query.  Fills query->count and query->vluns, advances the
 * cursor and sets *more non-zero while records remain.  Views created or
 * removed between chunks are seen or not according to their place in the
 * order; none is delivered twice.  Returns 0 or an array error code. */
int api_getSCSIProtocolControllers_chunk(api_vlunsInfo_t* query, api_spc_param_data* cursor,
                                         zar_u32* more, zar_u32 chunk);

/* Releases what the cursor holds; safe to call more than once. */
void api_freeSPCParamData(api_spc_param_data* cursor);

/* One record per VLUN template (isTemplate set, accessPriority the kind)
 * that matches the set criteria.  Returns 0 or an array error code. */
int api_getVLUNTemplates(api_vlunsInfo_t* info);

/* Releases info->vluns and sets count to 0; safe on a zeroed block. */
void api_freeVLUNs(api_vlunsInfo_t* info);

/* Creates one export of the volume whose WWN is (vvHigh, vvLow) under *lun
 * (API_LUN_AUTO or API_LUN_AUTO_24: the array chooses and writes it back).
 * The target: hostname (a host, or "set:NAME" for a host set), or a host
 * given by one of its initiators (hostWwn, or hostIscsiName; API_WWN_NONE /
 * NULL when not given), or none (NULL or "") for a port-present export; and
 * port (API_PORT_NONE for any port).  A host with a port gives a
 * matched-set export, a host without a port a host-sees one.  override
 * allows a second export of the volume to the same target; noVcn
 * suppresses the change notification to hosts.  Returns 0 or an array
 * error code, whose text goes to errText (errTextSize bytes, no final line
 * break). */
int api_createVLUN(api_evtparam_t* event, zar_u64 vvHigh, zar_u64 vvLow, zar_u32* lun,
                   const char* hostname, zar_u64 hostWwn, const char* hostIscsiName, lpid_t port,
                   int override, int noVcn, char* errText, int errTextSize);

/* Removes the export of volume (vvHigh, vvLow) under lun to the target
 * addressed as in api_createVLUN.  Returns 0 or an array error code with
 * its text in errText. */
int api_removeVLUN(api_evtparam_t* event, zar_u64 vvHigh, zar_u64 vvLow, zar_u32 lun,
                   const char* hostname, zar_u64 hostWwn, const char* hostIscsiName, lpid_t port,
                   int noVcn, char* errText, int errTextSize);

/* ------------------------------------------------------------------------ */
/* Hosts and paths                                                          */
/* ------------------------------------------------------------------------ */

/* Lists the hosts and host sets, by number.  *hosts is released with
 * api_freeHosts.  Returns 0 or an array error code. */
int api_getHosts(api_host_t** hosts, zar_u32* count);

/* Releases a list of api_getHosts. */
void api_freeHosts(api_host_t* hosts);

/* Lists initiator paths: the one with WWN text wwn (16 hex digits), or
 * with iSCSI name iscsiName, or those of host hostname, or all (all three
 * NULL or empty).  One entry per target port the path is logged in on
 * (pathInfo.port), or one with API_PORT_NONE when logged in nowhere;
 * initiators logged in but in no host are listed with an empty hostName.
 * With detail 0 the adapter fields are left empty.  Returns 0 (also for
 * none found), or an array error code; *list is released with
 * api_freeHostPaths. */
int api_getHostPaths(const char* wwn, const char* iscsiName, const char* hostname, zar_u32* count,
                     api_hardwareID** list, int detail);

/* Releases a list of api_getHostPaths. */
void api_freeHostPaths(api_hardwareID* list);

/* Creates host hostname (up to 31 characters: letters, digits, "-", "_",
 * ".") with persona and domain ("" or "-" for none) and a first path:
 * Fibre Channel WWN wwn and/or iSCSI name iscsiName (API_WWN_NONE / NULL
 * when not given).  Returns 0 or an array error code (3 bad name or
 * value, 21 name or initiator already in use), also in status. */
int api_createHost(api_status_t* status, api_evtparam_t* event, const char* hostname,
                   const char* iscsiName, zar_u64 wwn, zar_u32 persona, const char* domain);

/* Adds nwwn Fibre Channel paths (wwns) and niscsi iSCSI paths (iscsiNames,
 * 224 bytes each) to host hostname.  A path that already belongs to this
 * host is passed over; one of another host is refused unless override,
 * which moves it.  All or nothing.  Returns 0 or an array error code, also
 * in status. */
int api_addPath(api_evtparam_t* event, const char* hostname, zar_u32 nwwn, const zar_u64* wwns,
                zar_u32 niscsi, const char (*iscsiNames)[API_ISCSI_NAME_LEN], int override,
                api_status_t* status);

/* Removes one path from host hostname: the iSCSI name iscsiName when
 * isIscsi, else the WWN wwn.  count must be 1.  A path that is logged in
 * stays known to the array as an initiator of no host; with force it is
 * forgotten all the same.  reserved must be 0.  Returns 0 or an array
 * error code, also in status. */
int api_removePath(api_status_t* status, api_evtparam_t* event, const char* hostname, int isIscsi,
                   zar_u64 wwn, const char* iscsiName, int count, int force, int reserved);

/* Removes host hostname with its paths; refused (API_E_HOST_EXPORTED)
 * while exports name it.  The host leaves its host sets.  Returns 0 or an
 * array error code, also in status. */
int api_removeHost(api_evtparam_t* event, const char* hostname, api_status_t* status);

/* Changes host hostname: the fields of change whose marks are set (new
 * name, persona, domain).  Returns 0 or an array error code, also in
 * status. */
int api_setHost(api_evtparam_t* event, const char* hostname, const api_host_change_t* change,
                api_status_t* status);

/* ------------------------------------------------------------------------ */
/* Ports                                                                    */
/* ------------------------------------------------------------------------ */

/* Lists Fibre Channel target ports: the one with WWN wwn when byWwn, else
 * all.  flags must be 0.  Returns the number of records (0 when none) or a
 * negative array error code; *ports is released with api_freeFCPorts. */
int api_getFCPorts(zar_u64 wwn, int byWwn, int flags, api_FCPort_t** ports);

/* Releases count records of api_getFCPorts. */
void api_freeFCPorts(api_FCPort_t* ports, int count);

/* Lists iSCSI target ports.  Returns the number of records or a negative
 * array error code; *ports is released with api_freeISCSIPorts. */
int api_getISCSIPorts(api_iSCSIPort_t** ports);

/* Releases a list of api_getISCSIPorts. */
void api_freeISCSIPorts(api_iSCSIPort_t* ports);

/* The position of the Fibre Channel target port with WWN wwn.  Returns 0;
 * when there is none, sets *lpid to API_PORT_NONE and returns
 * API_E_PORT_INVALID. */
int api_getFCPortLPID(zar_u64 wwn, lpid_t* lpid);

/* The position of the iSCSI target port named name (case-insensitive).
 * Returns 0; when there is none, sets *lpid to API_PORT_NONE and returns
 * API_E_PORT_INVALID. */
int api_getiSCSIPortLPID(const char* name, lpid_t* lpid);

/* Turns "N:S:P" (node 0-7, slot 0-15, port 0-7, decimal) into a position.
 * Returns 0; on a bad text returns API_E_INVALID_ARG and leaves *port
 * unchanged.  Pure: needs no connection. */
int api_convertStrLPIDtoPortID(const char* text, lpid_t* port);

/* Writes the text form "N:S:P" of a port position into buffer (at least 16
 * bytes) and returns buffer; scratch (at least 16 bytes, may be buffer) is
 * working space.  Pure. */
char* loop_txbf(lpid_t port, char* buffer, char* scratch);

/* Converts a WWN text of 1 to 32 hexadecimal digits: up to 16 digits give
 * *high 0 and *low the value; more digits give the upper digits in *high.
 * Returns 0; on a bad text returns API_E_INVALID_ARG, also in status (may
 * be NULL), and leaves *high and *low unchanged.  Pure. */
int api_wwnStringToInt(api_status_t* status, const char* text, zar_u64* high, zar_u64* low);

/* ------------------------------------------------------------------------ */
/* Volumes                                                                  */
/* ------------------------------------------------------------------------ */

/* Volumes matching filter (may be NULL) and, when name is not NULL, with
 * that element name or WWN text.  Ordered by number.  detail 0 leaves
 * sizeMiB and vlunCount 0.  Returns 0 or an array error code; *list is
 * released with api_freeVVs. */
int api_getVVs_direct(const api_vv_filter_t* filter, const char* name, zar_u32* count,
                      api_vv_t** list, int detail);

/* The next chunk of at most chunk volumes (0: all that remain) that match
 * filter (may be NULL), ordered by number.  *cursor starts at 0; the call
 * leaves it non-zero while volumes remain and 0 at the end.  Returns 0 or
 * an array error code; *list is released with api_freeVVs. */
int api_getVVs_chunk(zar_u64* cursor, zar_u32 chunk, const api_vv_filter_t* filter, zar_u32* count,
                     api_vv_t** list, int detail);

/* Releases a volume list. */
void api_freeVVs(api_vv_t* list);

/* Sets up filter for at most maxTerms terms and maxValues values in all
 * ("|" lists count each value).  Returns 0 or API_E_NO_MEMORY. */
int api_getvv_filter_init(api_vv_filter_t* filter, zar_u32 maxTerms, zar_u32 maxValues);

/* Adds a term of kind API_VV_FILTER_*: include 1 keeps the volumes that
 * match text, include 0 drops them.  Volumes must satisfy every term.
 * Returns 0, or API_E_INVALID_ARG for a bad kind, text or a full filter. */
int api_getvv_filter_add(api_vv_filter_t* filter, int kind, int include, const char* text);

/* Releases a filter; safe on a zeroed one. */
void api_getvv_filter_free(api_vv_filter_t* filter);

/* Deletes the count volumes named in names (element names).  All or
 * nothing: API_E_VV_NOT_FOUND when a name is unknown, API_E_VV_BUSY when
 * one is exported or busy.  flags must be 0.  Returns 0 or an array error
 * code, also in status (may be NULL). */
int api_removeVVs(api_evtparam_t* event, const api_name_t* names, zar_u32 count, zar_u32 flags,
                  api_status_t* status);

/* ------------------------------------------------------------------------ */
/* System                                                                   */
/* ------------------------------------------------------------------------ */

/* Copies the system's contact text into buffer (size bytes, terminated).
 * Returns 0 or an array error code. */
int api_getSystemContact(char* buffer, int size);

/* Copies the system's owner name into buffer.  Returns 0 or an array error
 * code. */
int api_getOwnerName(char* buffer, int size);

/* The system's IPv4 and IPv6 addresses.  Returns 0 or an array error
 * code. */
int api_getSystemDualIP(_api_ipaddr_t* addr);

/* Classifies an address text and writes its canonical form into out
 * (outSize bytes, at least 46).  Returns API_IPV4_OK, API_IPV6_OK, or an
 * error value (API_IPV4_INVALID for a dotted text that is not an IPv4
 * address, API_IPV6_INVALID for a text with ":" that is not an IPv6
 * address, API_IP_INVALID otherwise).  Pure. */
api_ip_addr_e validateConvertIP(const char* text, char* out, int outSize);

/* Non-zero when text is non-empty and made of decimal digits only. */
int api_isAllNumeric(const char* text);

/* The number of live controller nodes (0 when the array cannot be
 * read). */
int cluster_num_nodes_alive(void);

/* The system's identity and configuration.  Returns 0 or an array error
 * code. */
int api_getSystemInfo(api_sysinfo_t* info);

/* The policy word of the array's configuration (bit
 * API_POLICY_ONE_HOST_PER_HWID: one host per hardware ID when creating a
 * view).  Returns 0 or an array error code. */
int api_getPolicy(zar_u32* policy);

#ifdef __cplusplus
} /* extern "C" */
#endif

/* ------------------------------------------------------------------------ */
/* Layout checks (x86-64)                                                   */
/* ------------------------------------------------------------------------ */

#if defined(__x86_64__)
#ifdef __cplusplus
#define ZARAPI_STATIC_ASSERT(c, m) static_assert(c, m)
#else
#define ZARAPI_STATIC_ASSERT(c, m) _Static_assert(c, m)
#endif

ZARAPI_STATIC_ASSERT(sizeof(lpid_t) == 2, "lpid_t is 16 bits");
ZARAPI_STATIC_ASSERT(sizeof(port_type_t) == 4, "enum size");
ZARAPI_STATIC_ASSERT(sizeof(vlun) == 764, "vlun is 764 bytes");
ZARAPI_STATIC_ASSERT(offsetof(vlun, vvname) == 65, "vlun.vvname");
ZARAPI_STATIC_ASSERT(offsetof(vlun, vvwwn) == 97, "vlun.vvwwn");
ZARAPI_STATIC_ASSERT(offsetof(vlun, hostname) == 130, "vlun.hostname");
ZARAPI_STATIC_ASSERT(offsetof(vlun, hostID) == 164, "vlun.hostID");
ZARAPI_STATIC_ASSERT(offsetof(vlun, hostwwn) == 168, "vlun.hostwwn");
ZARAPI_STATIC_ASSERT(offsetof(vlun, hostiscsiname) == 185, "vlun.hostiscsiname");
ZARAPI_STATIC_ASSERT(offsetof(vlun, lun) == 412, "vlun.lun");
ZARAPI_STATIC_ASSERT(offsetof(vlun, accessPriority) == 416, "vlun.accessPriority");
ZARAPI_STATIC_ASSERT(offsetof(vlun, volAccess) == 420, "vlun.volAccess");
ZARAPI_STATIC_ASSERT(offsetof(vlun, parentDeviceID) == 424, "vlun.parentDeviceID");
ZARAPI_STATIC_ASSERT(offsetof(vlun, port) == 490, "vlun.port");
ZARAPI_STATIC_ASSERT(offsetof(vlun, portwwn) == 492, "vlun.portwwn");
ZARAPI_STATIC_ASSERT(offsetof(vlun, portsasaddr) == 509, "vlun.portsasaddr");
ZARAPI_STATIC_ASSERT(offsetof(vlun, portiscsiname) == 526, "vlun.portiscsiname");
ZARAPI_STATIC_ASSERT(offsetof(vlun, hporttype) == 752, "vlun.hporttype");
ZARAPI_STATIC_ASSERT(offsetof(vlun, isTemplate) == 756, "vlun.isTemplate");
ZARAPI_STATIC_ASSERT(offsetof(vlun, isempty_vvset) == 757, "vlun.isempty_vvset");
ZARAPI_STATIC_ASSERT(offsetof(vlun, hostIndex) == 760, "vlun.hostIndex");

ZARAPI_STATIC_ASSERT(offsetof(api_vlunsInfo_t, hostname) == 32, "vlunsInfo.hostname");
ZARAPI_STATIC_ASSERT(offsetof(api_vlunsInfo_t, lun) == 64, "vlunsInfo.lun");
ZARAPI_STATIC_ASSERT(offsetof(api_vlunsInfo_t, port) == 68, "vlunsInfo.port");
ZARAPI_STATIC_ASSERT(offsetof(api_vlunsInfo_t, vluntype) == 72, "vlunsInfo.vluntype");
ZARAPI_STATIC_ASSERT(offsetof(api_vlunsInfo_t, count) == 80, "vlunsInfo.count");
ZARAPI_STATIC_ASSERT(offsetof(api_vlunsInfo_t, vluns) == 88, "vlunsInfo.vluns");
ZARAPI_STATIC_ASSERT(sizeof(api_vlunsInfo_t) == 96, "vlunsInfo size");

ZARAPI_STATIC_ASSERT(sizeof(api_HostPath) == 392, "api_HostPath is 392 bytes");
ZARAPI_STATIC_ASSERT(offsetof(api_HostPath, type) == 4, "HostPath.type");
ZARAPI_STATIC_ASSERT(offsetof(api_HostPath, wwn) == 8, "HostPath.wwn");
ZARAPI_STATIC_ASSERT(offsetof(api_HostPath, nodeWwn) == 16, "HostPath.nodeWwn");
ZARAPI_STATIC_ASSERT(offsetof(api_HostPath, sas_addr) == 24, "HostPath.sas_addr");
ZARAPI_STATIC_ASSERT(offsetof(api_HostPath, iscsiName) == 32, "HostPath.iscsiName");
ZARAPI_STATIC_ASSERT(offsetof(api_HostPath, ipaddr) == 256, "HostPath.ipaddr");
ZARAPI_STATIC_ASSERT(offsetof(api_HostPath, hbafirmver) == 260, "HostPath.hbafirmver");
ZARAPI_STATIC_ASSERT(offsetof(api_HostPath, hbavendor) == 292, "HostPath.hbavendor");
ZARAPI_STATIC_ASSERT(offsetof(api_HostPath, hbamodel) == 324, "HostPath.hbamodel");
ZARAPI_STATIC_ASSERT(offsetof(api_HostPath, hbadrvver) == 356, "HostPath.hbadrvver");
ZARAPI_STATIC_ASSERT(offsetof(api_HostPath, hostspeed) == 388, "HostPath.hostspeed");

ZARAPI_STATIC_ASSERT(sizeof(api_hardwareID) == 432, "api_hardwareID is 432 bytes");
ZARAPI_STATIC_ASSERT(offsetof(api_hardwareID, hostpersona) == 32, "hardwareID.hostpersona");
ZARAPI_STATIC_ASSERT(offsetof(api_hardwareID, pathInfo) == 40, "hardwareID.pathInfo");

ZARAPI_STATIC_ASSERT(sizeof(api_evtparam_t) == 484, "api_evtparam_t is 484 bytes");
ZARAPI_STATIC_ASSERT(offsetof(api_evtparam_t, user) == 4, "evtparam.user");
ZARAPI_STATIC_ASSERT(offsetof(api_evtparam_t, addr) == 36, "evtparam.addr");
ZARAPI_STATIC_ASSERT(offsetof(api_evtparam_t, method) == 82, "evtparam.method");
ZARAPI_STATIC_ASSERT(offsetof(api_evtparam_t, inst_op) == 210, "evtparam.inst_op");
ZARAPI_STATIC_ASSERT(offsetof(api_evtparam_t, inst_param) == 226, "evtparam.inst_param");

ZARAPI_STATIC_ASSERT(offsetof(api_FCPort_t, operationalStatus) == 32, "FCPort.operationalStatus");
ZARAPI_STATIC_ASSERT(offsetof(api_FCPort_t, deviceID) == 36, "FCPort.deviceID");
ZARAPI_STATIC_ASSERT(offsetof(api_FCPort_t, portWWN) == 104, "FCPort.portWWN");
ZARAPI_STATIC_ASSERT(sizeof(api_name_t) == 32, "api_name_t is 32 bytes");
ZARAPI_STATIC_ASSERT(offsetof(_api_ipaddr_t, ipv4_addr) == 4, "ipaddr.ipv4_addr");
ZARAPI_STATIC_ASSERT(offsetof(_api_ipaddr_t, ipv6_addr) == 8, "ipaddr.ipv6_addr");
ZARAPI_STATIC_ASSERT(sizeof(API_ISCSI_VENDOR_PREFIX) - 1 == API_ISCSI_VENDOR_PREFIX_LEN,
                     "vendor prefix is 25 characters");
#undef ZARAPI_STATIC_ASSERT
#endif /* __x86_64__ */

#endif /* ZARAPI_H */
