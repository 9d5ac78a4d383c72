#pragma once

#include <QDate>
#include <QString>

// What the content of a certificate field is, as far as Qt can tell.
struct CertificateSummary {
    enum Kind { Nothing, Certificate, Key, Unknown };

    Kind kind = Nothing;
    int size = 0;    // bytes that were read
    QString subject; // of a certificate, from the file
    QDate validUntil;
    int keyBits = 0; // of a private key that needs no password
};

// Of a text as CertificateFile has it: PEM, or the Base64 of DER. Without a TLS library that Qt finds, all
// content is Unknown.
CertificateSummary summaryOf(const QString &content);
