// The two records of tag editing: the ten values of one item with their flags, and, when several
// items are edited, what each item allows for each tag.
#pragma once

#include "kx/KxContentTree.h"

// The ten tags, in the order of the fields of both records.
enum KxTag : int {
    KxTagTitle = 0,
    KxTagArtist,
    KxTagArtist2,
    KxTagAlbum,
    KxTagGenre,
    KxTagYear,
    KxTagTrackNumber,
    KxTagRating,
    KxTagTagInt12,
    KxTagArt,
    KxTagCount
};

// How a tag's value travels through the item's property object.
enum KxTagKind : int {
    KxTagKindString,  // GetStringProperty / SetStringProperty
    KxTagKindNumber,  // GetIntProperty / SetIntProperty
    KxTagKindBytes,   // GetBlobProperty / SetBlobProperty, RemoveProperties
};

// Flags of a value as read: 0 the item lacks the tag, 3 it is there, 7 it is there and writable.
// In a record built from controls, bit 4 says the control was enabled; a write needs bits 1 and 4.
enum : DWORD {
    KX_TAGFLAG_PRESENT = 0x1,
    KX_TAGFLAG_READ = 0x2,
    KX_TAGFLAG_WRITABLE = 0x4,
    KX_TAGFLAGS_PRESENT = 0x3,
    KX_TAGFLAGS_WRITABLE = 0x7,
    KX_TAGFLAGS_WRITE_NEEDS = KX_TAGFLAG_PRESENT | KX_TAGFLAG_WRITABLE,
};

// The values of one item. Strings and art come from CoTaskMemAlloc and belong to the record;
// FreeTrackTagValues releases them. An absent string or art is null; an absent track number is -1.
struct _tagTrackTagValues {
    LPWSTR title;
    DWORD titleFlags;
    LPWSTR artist;
    DWORD artistFlags;
    LPWSTR artist2;
    DWORD artist2Flags;
    LPWSTR album;
    DWORD albumFlags;
    LPWSTR genre;
    DWORD genreFlags;
    LPWSTR year;  // digits, but a string in the library
    DWORD yearFlags;
    LONG trackNumber;
    DWORD trackNumberFlags;
    LONG rating;  // 0 to 5
    DWORD ratingFlags;
    LONG tagInt12;
    DWORD tagInt12Flags;
    BYTE* art;
    DWORD artFlags;
    ULONG artSize;
};

// What one of several items allows, one word per tag in KxTag order: 0 the item lacks the tag;
// else bit 1, plus bit 2 when the property's own flags have the bit of value 1, plus bit 4 when
// it can be written.
struct _tagTrackTagAttribute {
    DWORD tags[KxTagCount];
};

// Description of one tag: its key in the library and the fields that hold it in a record.
struct KxTagField {
    const KxPropertyKey* key;
    KxTagKind kind;
    LPWSTR _tagTrackTagValues::*text;  // string tags
    LONG _tagTrackTagValues::*number;  // number tags
    DWORD _tagTrackTagValues::*flags;
};

// The ten tags in record order (art's bytes and size are reached by name: art, artSize).
const KxTagField& KxTagFieldOf(int tag);

// The order in which the keys are announced to a new property object (not the record order).
extern const KxPropertyKey* const KxTagPrefetchKeys[KxTagCount];
