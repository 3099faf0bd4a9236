// Somebody whom the modes of files keep out, on POSIX hosts.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

namespace test {

/// While it lives, this process is an ordinary user's, even when root runs it.
class OrdinaryUser {
public:
    OrdinaryUser() : m_user(geteuid()) { EXPECT_EQ(seteuid(m_user == 0 ? 65534 : m_user), 0); }
    OrdinaryUser(OrdinaryUser const&) = delete;
    OrdinaryUser& operator=(OrdinaryUser const&) = delete;
    ~OrdinaryUser() { EXPECT_EQ(seteuid(m_user), 0); }

private:
    uid_t m_user;
};

} // namespace test
