#pragma once

class QString;

/// The word "list": prints what the program knows of chips, families, programmers, checksums or ports,
/// one a line, fields separated by tabs.
void printList(const QString& what);
