/*
 * Configuration macros of the client library. Defines macros only.
 */
#ifndef OW_CONFIG_H_INCLUDED
#define OW_CONFIG_H_INCLUDED

/* Interface level: the OpenWBEM release whose client interface this library offers. */
#define OW_VERSION "3.1.0"
/* Name of this implementation in the User-Agent header. */
#define OW_PACKAGE "owclient"

/* Marks exported symbols; all others are hidden. */
#define OW_COMMON_API __attribute__((visibility("default")))
#define OW_CLIENT_API __attribute__((visibility("default")))
#define OW_XML_API __attribute__((visibility("default")))
#define OW_HTTP_API __attribute__((visibility("default")))
#define OW_EXPORT
#define OW_IMPORT
#define OW_DEPRECATED __attribute__((deprecated))

/* Null handles and array indexes out of range throw. */
#define OW_CHECK_NULL_REFERENCES
#define OW_CHECK_ARRAY_INDEXING

#endif
