#pragma once

struct sockaddr;

namespace tavro::assistantservice {

/// Where a network address lies, as far as it decides whom the service may be sent to.
enum class AddressClass {
    Public,
    Loopback, ///< this machine
    Private, ///< a network of one's own
    Shared, ///< behind an access provider's address translation (100.64.0.0/10)
    Forbidden, ///< link-local, multicast, unspecified, reserved, or wrapping an address that is not public
};

/// IPv4 and IPv6; any other family is forbidden. An IPv4 address in IPv6 form counts as what it is.
AddressClass classOf(const sockaddr &address);
/// The same of an address in digits; anything else is forbidden.
AddressClass classOf(const char *digits);

} // namespace tavro::assistantservice
