# Hosts and keys of whoever hands the application out; `src/base/Deployment.h` says what each of them is. Empty: that
# service is off.
set(QUORVANE_UPDATE_HOST "" CACHE STRING "Host of the update feed, with a port if it isn't 443")
set(QUORVANE_UPDATE_PUBLIC_KEY "" CACHE STRING "Ed25519 key that the update feed is signed with, in base64")
set(QUORVANE_TELEMETRY_HOST "" CACHE STRING "Host that takes performance reports, with a port if it isn't 443")
set(QUORVANE_MAKER_ADDRESS "" CACHE STRING "Address of the web site to which the code on share cards leads")
# Where the project is at home; /issues and /images, with the pictures of docs/images, are below it. The name of the
# default belongs to nobody, for good (RFC 2606).
set(QUORVANE_PROJECT_ADDRESS "https://quorvane.example" CACHE STRING "Address of the project for package and software centre")

foreach(host UPDATE TELEMETRY)
    if(NOT QUORVANE_${host}_HOST MATCHES "^([A-Za-z0-9.-]+(:[0-9]+)?)?$")
        message(FATAL_ERROR "QUORVANE_${host}_HOST is no host: ${QUORVANE_${host}_HOST}")
    endif()
endforeach()
string(LENGTH "${QUORVANE_UPDATE_PUBLIC_KEY}" length)
if(QUORVANE_UPDATE_HOST AND NOT (length EQUAL 44 AND QUORVANE_UPDATE_PUBLIC_KEY MATCHES "^[A-Za-z0-9+/]+=$"))
    message(FATAL_ERROR "QUORVANE_UPDATE_PUBLIC_KEY is no key of 32 bytes in base64. Without it no update can be trusted")
endif()
# Longer ones need a code that is larger than its place on the cards.
string(LENGTH "${QUORVANE_MAKER_ADDRESS}" length)
set(address "https?://[A-Za-z0-9.-]+(:[0-9]+)?(/[A-Za-z0-9._~/?&=%-]*)?")
if(length GREATER 62 OR NOT QUORVANE_MAKER_ADDRESS MATCHES "^(${address})?$")
    message(FATAL_ERROR "QUORVANE_MAKER_ADDRESS is no address of a web site: ${QUORVANE_MAKER_ADDRESS}")
endif()
if(NOT QUORVANE_PROJECT_ADDRESS MATCHES "^${address}$" OR QUORVANE_PROJECT_ADDRESS MATCHES "[&?]|/$")
    message(FATAL_ERROR "QUORVANE_PROJECT_ADDRESS is no address below which pages lie: ${QUORVANE_PROJECT_ADDRESS}")
endif()
