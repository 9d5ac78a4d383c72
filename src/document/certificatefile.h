#pragma once

#include <QString>

// A certificate or key as the project carries it.
struct CertificateFile {
    bool opened = false; // false: the file could not be opened, the content is empty
    QString content;     // ".der": Base64 of the bytes; ".pem", ".crt", ".key": the text, UTF-8, trimmed
};

// Reads a certificate or key file. The ending decides, in small letters only; any other gives no content.
CertificateFile loadCertificateFile(const QString &path);
