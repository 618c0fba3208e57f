"""Requests of clients: the recorded ones, requests for classes of the object manager under test, and scrapes."""
import glob
import os

CAPTURES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../data/captures")


def recorded():
    """The distinct requests of the recorded conversations, sorted."""
    all_requests = set()
    for path in glob.glob(CAPTURES + "/*/*/c2s.bin"):
        with open(path, "rb") as file:
            rest = file.read()
        while rest:
            head, _, rest = rest.partition(b"\r\n\r\n")
            length = int(head.partition(b"\r\nContent-Length: ")[2].partition(b"\r\n")[0])
            all_requests.add(head + b"\r\n\r\n" + rest[:length])
            rest = rest[length:]
    return sorted(all_requests)


def http(content_type, body, lines=b""):
    return (b"POST /cimom HTTP/1.1\r\nHost: localhost\r\nContent-Type: " + content_type + b"\r\n" + lines +
            b"Content-Length: %d\r\n\r\n" % len(body) + body)


def xml_enumeration(class_name, lines=b""):
    body = (b'<?xml version="1.0"?><CIM CIMVERSION="2.0" DTDVERSION="2.0"><MESSAGE ID="1" PROTOCOLVERSION="1.0">'
            b'<SIMPLEREQ><IMETHODCALL NAME="EnumerateInstances"><LOCALNAMESPACEPATH><NAMESPACE NAME="root"/>'
            b'<NAMESPACE NAME="cimv2"/></LOCALNAMESPACEPATH><IPARAMVALUE NAME="ClassName"><CLASSNAME NAME="' +
            class_name + b'"/></IPARAMVALUE></IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>')
    return http(b"application/xml", body, lines)


def binary_enumeration(class_name):
    """The recorded enumeration with another class, and a head that makes the reply have a Content-Length."""
    with open(CAPTURES + "/ow-uds-anon/enum_OperatingSystem/c2s.bin", "rb") as file:
        body = file.read().partition(b"\r\n\r\n")[2]
    name = b"QAV_OperatingSystem"
    body = body.replace(bytes([len(name)]) + name, bytes([len(class_name)]) + class_name)
    return http(b"application/x-owbinary", body)


def scrape(path=b"/metrics", lines=b"", body=b""):
    return b"GET " + path + b" HTTP/1.1\r\nHost: localhost\r\n" + lines + b"\r\n" + body


def scrapes():
    """Requests for the pages of an exporter, in each format, with time limits, bodies, and paths that it does not have."""
    return [scrape(), scrape(b"/"), scrape(b"/healthz"), scrape(b"/metrics?a=%00"), scrape(b"/../metrics"),
            scrape(b"/" + b"x" * 9000),
            scrape(lines=b"Accept: application/openmetrics-text;version=1.0.0;q=0.5,*/*;q=0.1\r\n"),
            scrape(lines=b"Accept: " + b"text/plain;q=0.0001," * 400 + b"\r\n"),
            scrape(lines=b"Accept-Encoding: gzip;q=1, identity;q=0\r\n"),
            scrape(lines=b"X-Prometheus-Scrape-Timeout-Seconds: 0.001\r\n"),
            scrape(lines=b"X-Prometheus-Scrape-Timeout-Seconds: nan\r\n"),
            scrape(lines=b"Content-Length: 100\r\n", body=b"x" * 100),
            scrape(lines=b"Content-Length: 2000\r\n", body=b"x" * 2000)]


def chunked(request, size, extension=b""):
    """A request with its body in chunks."""
    head, _, body = request.partition(b"\r\n\r\n")
    lines = [line for line in head.split(b"\r\n") if not line.startswith(b"Content-Length:")]
    result = b"\r\n".join(lines + [b"Transfer-Encoding: chunked"]) + b"\r\n\r\n"
    for at in range(0, len(body), size):
        piece = body[at:at + size]
        result += b"%x%s\r\n%s\r\n" % (len(piece), extension, piece)
    return result + b"0" + extension + b"\r\n\r\n"
