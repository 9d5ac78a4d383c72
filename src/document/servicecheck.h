#pragma once

class CheckedObject;
class QDateTime;

// The check of a Service: its login, and its certificates as of now.
namespace ServiceCheck {

void check(CheckedObject *service, const QDateTime &now);

} // namespace ServiceCheck
