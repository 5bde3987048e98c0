// The agent's settings as one small XML document in a file, reached by paths such as
// "/Agent/Interval_min". The program keeps its settings in the registry and never loads such a
// file; the only call it makes is the discard when it ends.
//
// There is one document per process. Everything here is for one thread, and assumes that nobody
// else uses the file. Texts are bytes; their charset is the file's. Nothing is printed: a failure
// shows only in the result.
#pragma once

// Creates the missing directories of an absolute path and, if the file does not exist, the file
// with the default settings. Returns 0 when the file is there; one that existed before is not
// changed. Returns -1 on any failure, which leaves in place what was created before it, and for a
// path that is null, is not absolute, or ends with "/", because it does not name a file.
int EnsureSettingsFile(const char *path);

// Reads the file into the document, releases the document loaded before, and keeps the path for
// saving. Returns 0, also for a file that is not XML; there is no document then.
//
// Returns -1 when the path is null, and when the file cannot be opened for reading and writing, is
// empty or larger than INT32_MAX bytes, or cannot be mapped. The document and the path from before
// are then kept. The one failure that comes too late for that is unmapping: the result is -1, with
// the new document loaded.
int LoadSettingsFile(const char *path);

// Returns the first text of the element at a path of names separated by "/", with its entities
// decoded; null when there is no such element or it has no text. The text belongs to the document
// and is valid until it is read or set again, or the document is saved, replaced or released.
//
// Kept on purpose: the text is decoded inside the document. Getting it again therefore decodes what
// the first decoding left, and saving writes it decoded, where a "<" becomes markup. "&amp;" is
// decoded before the other entities, so "&amp;lt;" gives "<".
const char *SimpleXmlParserGet(const char *path);

// Sets the first text of the element at a path to `value`, with its special characters encoded.
// Does nothing when the value is null or there is no such element. `value` is plain text from
// malloc() and is taken over in every case. When memory runs out, it is stored without being
// encoded.
//
// A value that is saved and loaded comes back as it was set, with three exceptions: white space
// around it is lost, an entity in it, such as "&lt;", comes back decoded, and of one that is empty,
// or white space alone, nothing is left.
//
// Kept on purpose: an element without any node gets its first text, but an element that has
// attributes or elements and no text is not changed.
void SimpleXmlParserSet(const char *path, char *value);

// With flag 1, writes the document, formatted, to the file that was loaded last, which must still
// exist. With this or any other flag, then releases the document, if there is one. Returns 0, or -1
// when writing failed; the document is then kept. The file is not touched when there is no
// document, when the document has no element, or when the file cannot be opened. Any later failure
// can leave the file empty or incomplete.
//
// Texts are written as they are in the document, with one exception: no text can be read again that
// begins with ">", "/>" or a quote that is not closed, so that character is encoded in such a text.
int SaveSettingsFile(int save_flag);
