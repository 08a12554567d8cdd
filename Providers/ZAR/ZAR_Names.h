//%/////////////////////////////////////////////////////////////////////////////
// ZAR_Names.h: the names every provider module of the array uses, spelled
// once. ZAR_Common.h includes it.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_Names_h
#define ZAR_Names_h

#include <Pegasus/Common/Config.h>

PEGASUS_NAMESPACE_BEGIN

// The namespace of every class the array's providers serve.
static const char ZAR_NAMESPACE[] = "root/zar";

// Classes named by more than one provider.
static const char ZAR_STORAGE_SYSTEM[] = "ZAR_StorageSystem";
static const char ZAR_SCSI_CONTROLLER[] = "ZAR_SCSIController";
static const char ZAR_ISCSI_CONTROLLER[] = "ZAR_iSCSIController";
static const char ZAR_ISCSI_NODE[] = "ZAR_iSCSINode";
static const char ZAR_CONFIG_SERVICE[] = "ZAR_ControllerConfigurationService";
static const char ZAR_MASKING_CAPABILITIES[] = "ZAR_ProtocolControllerMaskingCapabilities";
static const char ZAR_STORAGE_VOLUME[] = "ZAR_StorageVolume";
static const char ZAR_FC_ENDPOINT[] = "ZAR_SCSIProtocolFCEndpoint";
static const char ZAR_ISCSI_ENDPOINT[] = "ZAR_iSCSIProtocolEndpoint";
static const char CIM_CONFIG_SERVICE[] = "CIM_ControllerConfigurationService";

// The maker's name in the instances' vendor properties.
static const char ZAR_VENDOR[] = "KESTREL";

// The sentinels of the array library (zarapi.h) are used as they are:
// API_PORT_NONE for "no port", API_WWN_NONE for "no WWN".

PEGASUS_NAMESPACE_END

#endif
