#include <cstdlib>
#include <ctime>
#include <gmock/gmock.h>

/// Zone and locale are fixed, so that a test that means others has to say so.
int main(int argc, char** argv) {
    setenv("TZ", "UTC", 1);
    setenv("LC_ALL", "en_US.UTF-8", 1);
    unsetenv("LANGUAGE");
    tzset();
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
