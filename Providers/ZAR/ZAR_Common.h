//%/////////////////////////////////////////////////////////////////////////////
// ZAR_Common.h: helpers shared by every provider module of the array.
//
// All operations are static members of ZAR_Common and keep no state between
// calls, except the two cached system addresses of getSystemIPAddr and the
// process-wide random state of generate_random_string.
//
// Concerns, one source file each:
//   ZAR_CommonRequest.cpp       the request frame: user and operation checks,
//                               the guarded array call, user and client address
//   ZAR_CommonClientAddress.cpp the client's IP address from the context
//   ZAR_CommonAccessors.cpp     typed property, key and parameter readers and
//                               property writers, instance skeletons
//   ZAR_CommonPaths.cpp         path matching, reference checks, association
//                               result filters
//   ZAR_CommonAssoc.cpp         association path and instance builders
//   ZAR_CommonIdentity.cpp      the storage system's identity through the
//                               server; the cache service's policy word
//   ZAR_CommonUtil.cpp          port positions and states, status codes,
//                               event blocks, random names, instance threshold
//   ZAR_CommonSPCId.cpp         view (SPC) device identifiers and paths
//   ZAR_CommonSPC.cpp           view instances assembled from array records
//   ZAR_CommonSPCModify.cpp     renaming the host behind a view
//   ZAR_CommonVolumes.cpp       deleting volumes named by their paths
//
// Tracing goes through the array library's log_message: level 4 for entry and
// exit lines, 3 for skipped bad input, 2 for errors and fallbacks.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_Common_h
#define ZAR_Common_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Common/ResponseHandler.h>
#include <Pegasus/Provider/CIMOMHandle.h>

#include <zarapi.h>

#include "ZAR_ArraySemaphore.h"
#include "ZAR_Names.h"

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_EXPORT ZAR_Common {
public:
    // ---------------------------------------------------------------------
    // Request frame

    // Status values returned by getProperty and getParameter.
    enum { ACCESSOR_FOUND = 0, ACCESSOR_ABSENT = 3, ACCESSOR_NULL = 4 };

    // Types accepted by getSystemIPAddr.
    enum { IP_TYPE_UNKNOWN = 0, IP_TYPE_V4 = 1, IP_TYPE_V6 = 2 };

    // The user name of the request's IdentityContainer; empty when the
    // context carries none.
    static String getUserName(const OperationContext& context);

    // The client's IP address as the server recorded it in the context; an
    // empty text when the server does not pass it on (as OpenPegasus does
    // not).
    static String getClientIPAddress(const OperationContext& context);

    // Per-request access check: api_zarOpenForCimserver(user), a request
    // without user name being the server's own (a null user). A refusal
    // throws TraceableCIMException(CIM_ERR_ACCESS_DENIED, "Insufficient
    // privilege for the user", file, line).
    static void checkUserAccess(const OperationContext& context, const char* file, Uint32 line);

    // Operation check for requests that change the array: asks
    // api_authorizeCIMUser(user, address, lower-case "<class>.<operation>").
    // 1 or 2 throws CIM_ERR_ACCESS_DENIED "Insufficient generic privilege";
    // any other nonzero result CIM_ERR_NOT_SUPPORTED "Does not support in
    // generic!" (TraceableCIMException with file and line).
    static void checkOperationAccess(const OperationContext& context, const CIMName& className,
                                     const String& operation, const char* file, Uint32 line);

    // The operation name checked by checkOperationAccess: className, "."
    // and operation, all in lower case.
    static String buildOperationName(const CIMName& className, const String& operation);

    // Runs call() under the array library's semaphore after initialising
    // *status with api_initStatus, and returns call()'s result. When the
    // wait times out, call() is skipped, *status gets code 32 "Semaphore
    // Timed-Out" and the wait's nonzero result is returned; the semaphore
    // is then not released (it was not taken).
    template <class Status, class Call>
    static int guardedCall(Status* status, Call call)
    {
        ZAR_ArraySemaphore semaphore;
        api_initStatus(status);
        if (!semaphore.held()) {
            errinfo_set_str(status, 32, "Semaphore Timed-Out");
            return semaphore.waitResult();
        }
        return call();
    }

    // ---------------------------------------------------------------------
    // Property and parameter accessors
    //
    // getProperty returns ACCESSOR_FOUND with the value written to `value`,
    // ACCESSOR_ABSENT when the instance has no such property, ACCESSOR_NULL
    // when its value is null; `value` is untouched unless found. A value of
    // another CIM type throws TypeMismatchException.

    static Sint32 getProperty(CIMInstance& instance, const String& propertyName,
                              CIMObjectPath& value);
    static Sint32 getProperty(CIMInstance& instance, const String& propertyName,
                              Array<String>& value);
    static Sint32 getProperty(CIMInstance& instance, const String& propertyName,
                              Array<Sint32>& value);
    static Sint32 getProperty(CIMInstance& instance, const String& propertyName,
                              Array<Uint16>& value);
    static Sint32 getProperty(CIMInstance& instance, const String& propertyName, Uint64& value);
    static Sint32 getProperty(CIMInstance& instance, const String& propertyName, Uint32& value);
    static Sint32 getProperty(CIMInstance& instance, const String& propertyName, Uint16& value);
    static Sint32 getProperty(CIMInstance& instance, const String& propertyName, Uint8& value);
    static Sint32 getProperty(CIMInstance& instance, const String& propertyName, Boolean& value);
    static Sint32 getProperty(CIMInstance& instance, const String& propertyName,
                              CIMDateTime& value);

    // The string value of a property; empty when the name is empty, the
    // instance uninitialized, the property absent or null.
    static String getStringProperty(const CIMInstance& instance, const String& propertyName);

    // The value text of the key binding named keyName (case ignored; the
    // last of repeated names wins); empty when there is none.
    static String getStringProperty(const CIMObjectPath& path, const String& keyName);

    // A copy of the property's value; a null value when the property is
    // absent; a non-null empty string for an empty name or an uninitialized
    // instance.
    static CIMValue getPropertyValue(const CIMInstance& instance, const String& propertyName);

    // getParameter looks for the first parameter of that name (case
    // ignored) whose value is not null and writes it to `value`: returns
    // ACCESSOR_FOUND, else ACCESSOR_ABSENT (also when the parameter is
    // given only as null). A value of another type throws
    // TypeMismatchException.

    static Sint32 getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                               Uint8& value);
    static Sint32 getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                               Uint16& value);
    static Sint32 getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                               Array<Uint16>& value);
    static Sint32 getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                               Uint32& value);
    static Sint32 getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                               Uint64& value);
    static Sint32 getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                               Boolean& value);
    static Sint32 getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                               CIMDateTime& value);
    static Sint32 getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                               CIMObjectPath& value);
    static Sint32 getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                               String& value);
    static Sint32 getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                               Array<String>& value);

    // setPropertyValue sets the value of a property the instance already
    // has (built from its class); a property the instance lacks is skipped
    // silently. A property of another CIM type throws TypeMismatchException.
    // Pass texts as String: a string literal would pick the Boolean form.

    static void setPropertyValue(CIMInstance& instance, CIMName propertyName, const String& value);
    static void setPropertyValue(CIMInstance& instance, CIMName propertyName, const Boolean& value);
    static void setPropertyValue(CIMInstance& instance, CIMName propertyName, const Uint8& value);
    static void setPropertyValue(CIMInstance& instance, CIMName propertyName, const Uint16& value);
    static void setPropertyValue(CIMInstance& instance, CIMName propertyName, const Uint32& value);
    static void setPropertyValue(CIMInstance& instance, CIMName propertyName, const Uint64& value);
    static void setPropertyValue(CIMInstance& instance, CIMName propertyName, const Sint16& value);
    static void setPropertyValue(CIMInstance& instance, CIMName propertyName,
                                 const Array<String>& value);
    static void setPropertyValue(CIMInstance& instance, CIMName propertyName,
                                 const Array<Uint16>& value);
    static void setPropertyValue(CIMInstance& instance, CIMName propertyName,
                                 const Array<Sint32>& value);
    static void setPropertyValue(CIMInstance& instance, CIMName propertyName,
                                 const Array<Uint64>& value);
    static void setPropertyValue(CIMInstance& instance, CIMName propertyName,
                                 const Array<Boolean>& value);
    static void setPropertyValue(CIMInstance& instance, CIMName propertyName,
                                 const Array<CIMDateTime>& value);
    static void setPropertyValue(CIMInstance& instance, CIMName propertyName,
                                 const CIMObjectPath& value);
    static void setPropertyValue(CIMInstance& instance, CIMName propertyName,
                                 const CIMDateTime& value);

    // Replaces a present property by one holding `embedded` as an instance
    // value (the property moves to the end of the list); absent: nothing.
    static void setPropertyValue(CIMInstance& instance, CIMName propertyName,
                                 const CIMInstance& embedded);

    // Sets a present property to a null value of `type`; absent: nothing.
    static void setPropertyValueToNull(CIMInstance& instance, CIMName propertyName, CIMType type);

    // An instance of the class with every property at its default value,
    // qualifiers and class origins included.
    static CIMInstance buildInstanceSkeleton(CIMClass& cimClass);

    // The class as stored by the process-wide internal cache service;
    // failures of the service propagate unchanged.
    static CIMClass getStoredCIMClass(CIMOMHandle& handle, const OperationContext& context,
                                      const CIMNamespaceName& nameSpace, const CIMName& className,
                                      Boolean localOnly, Boolean includeQualifiers,
                                      Boolean includeClassOrigin,
                                      const CIMPropertyList& propertyList);

    // ---------------------------------------------------------------------
    // Object path matching and reference checks

    // True when the paths are identical once hosts are ignored, also the
    // hosts of paths held as string or reference key values (one level).
    // Namespaces are compared: a path without one never matches one with.
    static Boolean matchObjectPath(const CIMObjectPath& a, const CIMObjectPath& b);

    // True when `ref` points into nameSpace (a missing namespace is set to
    // it) and its host is empty, equals hostName ignoring case, or is the
    // array's IPv4 or (canonicalised) IPv6 address. False is traced at
    // level 2.
    static Boolean verifyRefMethodParam(CIMObjectPath& ref, CIMNamespaceName nameSpace,
                                        String& hostName);

    // As above, and the class of `ref` must be className (case ignored).
    static Boolean verifyRefMethodParam(CIMObjectPath& ref, CIMNamespaceName nameSpace,
                                        String& hostName, CIMName className);

    // As above, and the class of `ref` must be one of classNames.
    static Boolean verifyRefMethodParam(CIMObjectPath& ref, CIMNamespaceName nameSpace,
                                        String& hostName, Array<CIMName>& classNames);

    // The array's IPv4 (IP_TYPE_V4) or IPv6 (IP_TYPE_V6) address text, read
    // once from the array and cached while the IPv4 text is known; empty
    // when unknown or for another type.
    static String getSystemIPAddr(int iptype);

    // True when a reference property of the instance (the one named `role`
    // when role is not empty) matches objectName. A role naming no
    // reference property throws CIMException(CIM_ERR_INVALID_PARAMETER).
    static Boolean _isInstanceValidReference(const CIMObjectPath& objectName,
                                             CIMInstance& assocInstance, const String& role);

    // The association instances of class resultClass (any when null) that
    // refer to objectName (host and namespace ignored) in role `role`.
    static Array<CIMInstance> filterReferenceNames(const Array<CIMInstance>& assocInstances,
                                                   const CIMObjectPath& objectName,
                                                   const CIMName& resultClass, const String& role);

    // The far-end references of the association instance, restricted to
    // resultClasses (once per matching entry) and to resultRole.
    static Array<CIMObjectPath> filterAssocInstanceToTargetPaths(CIMInstance& assocInstance,
                                                                 const CIMObjectPath& objectName,
                                                                 Array<CIMName>& resultClasses,
                                                                 String resultRole);

    // As filterAssocInstanceToTargetPaths, answering with the instances of
    // targetInstances whose paths match the far ends.
    static Array<CIMInstance> filterAssocInstanceToTargetInstances(
        CIMInstance& assocInstance, const CIMObjectPath& objectName,
        const Array<CIMInstance>& targetInstances, Array<CIMName>& resultClasses,
        String resultRole);

    // True when any key value of the path equals poolID ignoring case.
    static Boolean isPoolPath(const CIMObjectPath& path, const String& poolID);

    // Membership tests: strings exactly, paths by matchObjectPath (of
    // instances by their paths), class names ignoring case.
    static Boolean isPartOfArray(const String& x, const Array<String>& list);
    static Boolean isPartOfArray(const CIMObjectPath& x, const Array<CIMObjectPath>& list);
    static Boolean isPartOfArray(const CIMObjectPath& x, const Array<CIMInstance>& list);
    static Boolean isPartOfArray(const CIMName& x, const Array<CIMName>& list);

    // True when name is not null and is className (case ignored); isOneOf
    // for any class of a null-terminated list.
    static Boolean isClass(const CIMName& name, const char* className);
    static Boolean isOneOf(const CIMName& name, const char* const* classNames);

    // ---------------------------------------------------------------------
    // Association builders. End paths are copied with their hosts set as
    // given (an empty host gives an end without host) and stored as
    // reference keys in role order.

    static CIMObjectPath buildAssocPath(CIMName assocClass, String role1, String role2,
                                        CIMObjectPath end1, CIMObjectPath end2, String host,
                                        String nameSpace);
    static CIMObjectPath buildAssocPath(CIMName assocClass, String role1, String role2,
                                        CIMObjectPath end1, CIMObjectPath end2, String host1,
                                        String host2, String assocHost, String nameSpace);
    static CIMObjectPath buildAssocPath(CIMName assocClass, String role1, String role2,
                                        String role3, CIMObjectPath end1, CIMObjectPath end2,
                                        CIMObjectPath end3, String host, String nameSpace);

    static CIMInstance buildAssocInstance(CIMName assocClass, String role1, String role2,
                                          CIMObjectPath end1, CIMObjectPath end2, CIMClass cimClass,
                                          String host, String nameSpace);
    static CIMInstance buildAssocInstance(CIMName assocClass, String role1, String role2,
                                          CIMObjectPath end1, CIMObjectPath end2, CIMClass cimClass,
                                          String host1, String host2, String assocHost,
                                          String nameSpace);
    static CIMInstance buildAssocInstance(CIMName assocClass, String role1, String role2,
                                          String role3, CIMObjectPath end1, CIMObjectPath end2,
                                          CIMObjectPath end3, CIMClass cimClass, String host,
                                          String nameSpace);

    // Antecedent/Dependent association in root/zar; the ends keep their
    // own hosts.
    static CIMObjectPath buildDepAssocPath(String host, CIMName assocClass,
                                           CIMObjectPath antecedent, CIMObjectPath dependent);
    static CIMInstance buildDepAssocInstance(String host, CIMName assocClass,
                                             CIMObjectPath antecedent, CIMObjectPath dependent,
                                             CIMClass cimClass);

    // ---------------------------------------------------------------------
    // System identity (answered by the internal cache object through a
    // local client connection, some falling back to the provider's handle)

    // Instance names of the class, through a local client connection.
    static Array<CIMObjectPath> enumerateInstanceNames(const CIMNamespaceName& nameSpace,
                                                       const CIMName& className);

    // Invokes an extrinsic method through a local client connection.
    static CIMValue invokeMethod(const CIMNamespaceName& nameSpace,
                                 const CIMObjectPath& instanceName, const CIMName& methodName,
                                 const Array<CIMParamValue>& inParameters,
                                 Array<CIMParamValue>& outParameters);

    // The path of the ZAR_InternalCache object of root/PG_Internal.
    static CIMObjectPath buildInternalCacheObjectPath(const String& host, const String& systemName);

    // Identity values; empty (or 0) when the cache object gives none.
    // Forms taking a handle retry through it when the local connection
    // fails, except getSystemHostName; the others let errors propagate.
    static String getSystemName(CIMOMHandle& handle);
    static String getSystemName();
    static Uint32 getSystemID();
    static Sint32 getSystemType();
    static Boolean isQuadPortSystem(CIMOMHandle& handle);
    // An all-digit host name is returned with "_" in front.
    static String getSystemHostName(CIMOMHandle& handle);
    static String getSystemAddress(CIMOMHandle& handle);

    // Path of the ZAR_StorageSystem (ZAR_SystemPackage,
    // ZAR_StorageSystemView) instance with the array's host name and
    // namespace root/zar; an empty path when there is none.
    static CIMObjectPath getSystemObjectPath(CIMOMHandle& handle);
    static CIMObjectPath getSystemPkgObjectPath(CIMOMHandle& handle);
    static CIMObjectPath getSystemViewObjectPath(CIMOMHandle& handle);

    // The internal cache service's policy word (bit 0x4: one hardware ID
    // per view).
    static Uint32 getPolicy();
    static void setPolicy(Uint32 policy);

    // ---------------------------------------------------------------------
    // Conversions and small utilities

    // node / 2 for nodes 0..7, else -1.
    static int getNodePairIndex(int node);

    // Port position of a target port by WWN or by iSCSI name, as the array
    // reports it (the lookup's own result is not checked).
    static Uint16 getPortLPID(Uint64 wwn);
    static Uint16 getPortLPID(String& iscsiName);

    // CIM OperationalStatus and HealthState of a port state.
    static Uint16 getPortOperationalStatus(api_port_status_t status);
    static Uint16 getPortHealthState(api_port_status_t status);

    // CIM status code of a method return code: 0 -> 0, 1 -> 7, 2 -> 17,
    // 5 -> 4, others -> 1.
    static CIMStatusCode methodToCIMStatusCode(Uint32 rc);

    // Port positions of target port identifiers (16-digit WWN, iSCSI target
    // name or "N:S:P" text); 0xFFFC for an unknown one. Returns the count
    // and sets *ports to a new[] array the caller delete[]s (0 when empty).
    static Uint32 getPortIDs(Array<String> ids, Uint16** ports);

    // Sets the operation text (at most 15 characters; null clears it).
    // Returns 1 (and logs) for a null block, else 0.
    static int setEventOp(api_evtparam_t* ev, const char* op);

    // Fills user, client address, method ("<className>:<methodName>", at
    // most 127 characters) and operation; clears inst_param. The second
    // form also copies param (at most 255 characters, empty when null).
    // Returns 1 (and logs) for a null block, else 0. Null texts clear
    // their fields.
    static int setEventParam(api_evtparam_t* ev, const char* className, const char* methodName,
                             const char* op, const char* user, const char* addr);
    static int setEventParam(api_evtparam_t* ev, const char* className, const char* methodName,
                             const char* op, const char* user, const char* addr, const char* param);

    // Fills str with len - 1 random characters of [a-zA-Z0-9_] and a
    // terminator; the random state is process-wide, seeded once. Stops the
    // process through the array library when str is null or len is 0.
    static void generate_random_string(char* str, unsigned len);

    // The address-space soft limit in units of 1,000,000 bytes, times
    // factor, truncated to 32 bits.
    static Uint32 getInstanceThreshold(unsigned factor);

    // ---------------------------------------------------------------------
    // Views (SCSI protocol controllers)

    // Decodes a view's DeviceID ("MS:<lpid>:<hostID>", "HS:<hostID>",
    // "HSet:<ID>", "PP:<lpid>") into its type code (1..4; 0 for an unknown
    // prefix; untouched without a colon), host name (empty when unknown)
    // and port (65532 when none). With iSCSI set, deviceID is an iSCSI
    // target name: type 4 and that port.
    static void deReferenceSPCDeviceID(String& deviceID, Uint32& vlunType, String& hostName,
                                       Uint16& portID, bool iSCSI);

    // An FC endpoint's path: root/zar, class className, keys
    // SystemCreationClassName ZAR_StorageSystem, SystemName,
    // CreationClassName, Name (the port's WWN as 16 upper-case hexadecimal
    // digits, or as given when it is no WWN of at most 16 digits).
    static CIMObjectPath buildFCEndpointPath(const String& className, const String& systemName,
                                             const String& portWWN);

    // The iSCSI name of a target name: the text before its first ",t,"
    // (either case), or the whole text.
    static String extractISCSIName(const String& targetName);

    // The path of an object of the storage system: root/zar, class
    // className, keys SystemCreationClassName (systemClass), SystemName,
    // CreationClassName (className) and keyName = keyValue.
    static CIMObjectPath buildSystemScopedPath(const String& host, const String& systemName,
                                               const CIMName& className, const char* keyName,
                                               const String& keyValue,
                                               const String& systemClass = ZAR_STORAGE_SYSTEM);

    // The view's path: root/zar, class className, keys
    // SystemCreationClassName, SystemName, CreationClassName, DeviceID.
    static CIMObjectPath buildSPCObjectPath(String systemCreationClassName, const String& host,
                                            const String& systemName, const String& deviceID,
                                            CIMName className);

    // Appends to `instances` the views of one chunk (at most `chunk`
    // records) of class className ("ZAR_SCSIController" or
    // "ZAR_iSCSIController"), narrowed to the DeviceID of `path` when it
    // names a class (none when that path has no DeviceID). The array sets
    // *more while records remain and advances cursor. A failed chunk throws
    // CIMException(CIM_ERR_INVALID_PARAMETER, "Failed to retrieve SPC data."
    // followed by the array's error text) while records remain (after
    // releasing cursor).
    static void buildSPCInstances(CIMOMHandle& cimom, const OperationContext& context,
                                  const CIMObjectPath& path, String& systemName, String& host,
                                  CIMName className, bool includeQualifiers,
                                  bool includeClassOrigin, const CIMPropertyList& propertyList,
                                  Uint32 threshold, Array<CIMInstance>& instances,
                                  api_spc_param_data* cursor, Uint32* more, Uint32 chunk);

    // One view instance of class cls from an array record.
    static CIMInstance buildSPCInstance(String systemCreationClassName, CIMClass cls, vlun* record,
                                        const String& systemName, const String& host);

    // modifyInstance of a view: only ElementName may change, and it renames
    // the host behind an "MS:" or "HS:" view on the array.
    static void modifySPC(const OperationContext& context, const CIMObjectPath& path,
                          const CIMInstance& instance, bool includeQualifiers,
                          const CIMPropertyList& propertyList, ResponseHandler& handler);

    // ---------------------------------------------------------------------
    // Volumes

    // Deletes the volumes whose paths are given (their DeviceID keys are
    // volume WWNs), all or nothing. Busy volumes are tried again every 2
    // seconds, 11 attempts in all. Returns 0; 32768 when the array deleted
    // fewer volumes than paths were given or a volume was not found; 4 when
    // the volumes stayed busy or the deletion failed; the failure of
    // fillInVVNames when the names cannot be found. flag is passed to
    // api_removeVVs.
    static int removeVVs(api_evtparam_t* event, Array<CIMObjectPath>& volumes, unsigned int flag);

    // A new table (free() it) of the volumes' element names, 32 bytes per
    // path, and the number of names filled in. Returns 0; 5 for a null
    // names or count; 4 when no name was found or memory ran out; the
    // failure of the string form.
    static int fillInVVNames(Array<CIMObjectPath>& volumes, api_name_t** names,
                             unsigned int* count);

    // Appends the element names of the volumes whose WWNs are the paths'
    // DeviceID keys, asking the array with WWN lists of at most 255
    // characters each. Returns 0; 5 for an empty path list; 4 when a query
    // failed or no name was found.
    static int fillInVVNames(Array<CIMObjectPath>& volumes, Array<String>& names);

    // How removeVVs waits between attempts on busy volumes.
    typedef void (*RetryWait)(unsigned int seconds);

    // Replaces the wait of removeVVs (null restores sleeping) and returns
    // the previous one. For tests; not for use while requests run.
    static RetryWait setRetryWait(RetryWait wait);
};

PEGASUS_NAMESPACE_END

#endif
