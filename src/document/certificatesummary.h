#pragma once

#include <QDate>
#include <QString>

// What the content of a certificate field is, in short, for the user.
struct CertificateSummary {
    enum Kind { Nothing, Certificate, Key, Unknown };

    Kind kind = Nothing;
    int size = 0;    // bytes that were read
    QString subject; // of the first certificate
    QDate validUntil;
    int keyBits = 0; // of a private key that needs no password
};

// Reads a content as the project carries it, see certificatefile.h. Without an SSL library all content is
// Unknown.
CertificateSummary summaryOf(const QString &content);
