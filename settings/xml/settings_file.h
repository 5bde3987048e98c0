// The agent's settings as one small XML document in a file, reached by paths such as
// "/Agent/Interval_min". The program keeps its settings in the registry and loads no such file; all
// that it calls is the discard when it ends.
//
// There is one document for the whole process, and one thread. The file is taken to have no other
// user. Texts are bytes in the charset of the file, whatever that is. Nothing is printed: a failure
// shows only in the result.
#pragma once

// Creates the directories that are missing on an absolute path and, if the file does not exist, the
// file with the default settings. 0 when the file is there, with its content left alone if it was
// before; -1 on any failure, which leaves what was created so far, and for a path that ends with
// "/" and so names no file.
int EnsureSettingsFile(const char *path);

// Reads the file into the document and keeps the path for saving. 0, or -1 when the file cannot be
// opened for reading and writing, is empty, or is too large to be mapped or counted in 31 bits, or
// when the system fails while it is looked at: the document loaded before stays then. A file that
// is no XML gives 0, and no document. The document loaded before is released. (Should the system
// refuse to give the file's memory back, the result is -1 and the new document is there.)
int LoadSettingsFile(const char *path);

// The first text of the element at a path of names separated by "/", with its entities decoded.
// None when there is no such element or no text in it. It belongs to the document, and stays valid
// until the text is set, or the document is saved, replaced or released.
//
// Kept on purpose: the text is decoded in the document itself, so that asking again decodes what
// the first decoding left, and saving writes it decoded: a "<" is markup in the file then. "&amp;"
// is decoded before the others, so that "&amp;lt;" gives "<".
const char *SimpleXmlParserGet(const char *path);

// Sets the first text of the element at a path; `value`, plain text from malloc() that is taken
// over whatever becomes of it, is stored with its entities encoded. Nothing happens without a
// value, or when there is no such element. Where memory runs out, it is stored as it is.
//
// Saved and loaded, a value comes back as it was set, except for white space around it, which is
// lost, and for entities in it, which come back decoded.
//
// Kept on purpose: an element without any node gets its first text, but one that holds attributes
// or elements and no text is left as it is.
void SimpleXmlParserSet(const char *path, char *value);

// With 1, writes the document back, formatted, to the file that was loaded last; the file must
// still be there. Texts are written as they stand, except that one which begins with ">", "/>" or a
// quote that is not closed could not be read again: that character is encoded in it.
//
// With 1 or any other flag, the document is then released, which succeeds without one too. 0, or -1
// when writing failed, with the document still held. Without a document, with one that has no
// element, or when the file cannot be opened, the file is not touched; a later failure can leave it
// empty or with anything less than the document in it.
int SaveSettingsFile(int save_flag);
