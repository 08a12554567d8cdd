// Users and roles: the access check, operation rules and the password check
// of the CIM server.
#include "ArrayFixture.h"

#include <pwd.h>
#include <unistd.h>

#include <string>

#include <zarauth.h>

namespace {

class Users : public ArrayTest {
protected:
    void SetUp() override
    {
        ArrayTest::SetUp();
        ASSERT_EQ(0, zarsim_add_user("viewer", "viewer-pass-1", "browse"));
        ASSERT_EQ(0, zarsim_add_user("admin", "admin-pass-1", "edit"));
        ASSERT_EQ(0, zarsim_add_user("root1", "root-pass-123", "super"));
    }
};

TEST_F(Users, OpenForAUserNeedsAnEnabledUser)
{
    EXPECT_EQ(0, api_zarOpenForCimserver("viewer"));
    EXPECT_NE(0, api_zarOpenForCimserver("stranger"));
    ASSERT_EQ(0, zarsim_enable_user("viewer", 0));
    EXPECT_NE(0, api_zarOpenForCimserver("viewer"));
}

TEST_F(Users, OperationRulesByRole)
{
    const char* expose = "zar_controllerconfigurationservice.exposepaths";
    EXPECT_EQ(0, api_authorizeCIMUser("admin", "192.0.2.1", expose));
    EXPECT_EQ(2, api_authorizeCIMUser("viewer", "192.0.2.1", expose));
    EXPECT_EQ(0,
              api_authorizeCIMUser("viewer", "192.0.2.1", "zar_scsicontroller.enumerateinstances"));
    EXPECT_EQ(2, api_authorizeCIMUser("viewer", "192.0.2.1", "zar_scsicontroller.modifyinstance"));
    EXPECT_EQ(0, api_authorizeCIMUser(
                     "admin", "", "ZAR_SCSIController.ModifyInstance"));  // case does not matter
    EXPECT_EQ(3, api_authorizeCIMUser("root1", "", "zar_something.unheardof"));
    EXPECT_EQ(2, api_authorizeCIMUser("admin", "", "zar_internalcache.setpolicy"));
    EXPECT_EQ(0, api_authorizeCIMUser("root1", "", "zar_internalcache.setpolicy"));
    EXPECT_EQ(1, api_authorizeCIMUser("stranger", "", expose));
    ASSERT_EQ(0, zarsim_enable_user("admin", 0));
    EXPECT_EQ(1, api_authorizeCIMUser("admin", "", expose));
}

// The OS user of the calling process is the CIM server's own principal:
// allowed with the super role, though no array user of that name exists,
// while its password check stays that of the array's users.
TEST_F(Users, ProcessUserIsTheServersOwnPrincipal)
{
    struct passwd* pw = getpwuid(geteuid());
    ASSERT_NE(nullptr, pw);
    const std::string own = pw->pw_name;
    ASSERT_NE(ZAR_ROLE_SUPER, zar_userRole(own.c_str())) << "no array user of that name here";
    EXPECT_EQ(0, api_zarOpenForCimserver(own.c_str()));
    EXPECT_EQ(0, api_authorizeCIMUser(own.c_str(), "", "zar_internalcache.setpolicy"));
    EXPECT_EQ(0, api_authorizeCIMUser(own.c_str(), "127.0.0.1",
                                      "zar_controllerconfigurationservice.exposepaths"));
    EXPECT_EQ(3, api_authorizeCIMUser(own.c_str(), "", "zar_something.unheardof"));
    EXPECT_NE(0, zar_authenticateUser(own.c_str(), ""));
    // Only that exact name: a longer one is a stranger.
    EXPECT_NE(0, api_zarOpenForCimserver((own + "x").c_str()));
    EXPECT_EQ(1, api_authorizeCIMUser((own + "x").c_str(), "", "zar_internalcache.setpolicy"));
}

TEST_F(Users, PasswordCheck)
{
    EXPECT_EQ(0, zar_authenticateUser("admin", "admin-pass-1"));
    EXPECT_NE(0, zar_authenticateUser("admin", "admin-pass-2"));
    EXPECT_NE(0, zar_authenticateUser("admin", ""));
    EXPECT_NE(0, zar_authenticateUser("nobody", "admin-pass-1"));
    EXPECT_NE(0, zar_authenticateUser(nullptr, "x"));
    EXPECT_EQ(ZAR_ROLE_EDIT, zar_userRole("admin"));
    ASSERT_EQ(0, zarsim_enable_user("admin", 0));
    EXPECT_NE(0, zar_authenticateUser("admin", "admin-pass-1"));
    EXPECT_EQ(ZAR_ROLE_NONE, zar_userRole("admin"));
}

TEST_F(Users, AddRefusals)
{
    EXPECT_EQ(API_E_EXISTS, zarsim_add_user("admin", "another-pass", "edit"));
    EXPECT_EQ(API_E_INVALID_ARG, zarsim_add_user("new", "short", "edit"));
    EXPECT_EQ(API_E_INVALID_ARG, zarsim_add_user("new", "long-enough-pass", "king"));
    EXPECT_EQ(API_E_INVALID_ARG, zarsim_add_user("bad name", "long-enough-pass", "edit"));
    EXPECT_EQ(API_E_USER_NOT_FOUND, zarsim_enable_user("nobody", 1));
}

}  // namespace
