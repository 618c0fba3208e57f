/*
 * Configuration macros of the client library. Defines macros only.
 */
#ifndef OW_CONFIG_H_INCLUDED
#define OW_CONFIG_H_INCLUDED

/* Interface level: the OpenWBEM release whose client interface this library offers. */
#define OW_VERSION "3.1.0"
/* Name of this implementation, as it stands in the User-Agent header. */
#define OW_PACKAGE "owclient"

/* Marks what the shared library offers; everything else stays hidden. */
#define OW_COMMON_API __attribute__((visibility("default")))
#define OW_CLIENT_API __attribute__((visibility("default")))

#endif
