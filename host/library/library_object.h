// Base of the library's COM objects: a reference count that the library audits, and the library
// the object works on.
#pragma once

#include "host/library/in_memory_library.h"

namespace kxhost {

class LibraryObject {
public:
    LibraryObject(std::shared_ptr<InMemoryLibrary> library, const char* className, ItemId item)
        : library_(std::move(library)), className_(className), item_(item) {
        library_->ObjectBorn(this);
    }
    virtual ~LibraryObject() { library_->ObjectDied(this); }
    LibraryObject(const LibraryObject&) = delete;
    LibraryObject& operator=(const LibraryObject&) = delete;

    ULONG AddRefImpl() {
        library_->RefAdded();
        return static_cast<ULONG>(InterlockedIncrement(&refs_));
    }
    ULONG ReleaseImpl() {
        library_->RefReleased();
        LONG left = InterlockedDecrement(&refs_);
        if (left == 0) delete this;
        return static_cast<ULONG>(left);
    }
    const char* ClassName() const { return className_; }
    ItemId Item() const { return item_; }
    LONG References() const { return refs_; }

protected:
    InMemoryLibrary& Lib() const { return *library_; }
    const std::shared_ptr<InMemoryLibrary>& LibPtr() const { return library_; }

private:
    std::shared_ptr<InMemoryLibrary> library_;
    const char* className_;
    ItemId item_;
    LONG refs_ = 1;  // the creator's reference, counted by ObjectBorn
};

// The IUnknown of a class derived from LibraryObject and one or more interfaces.
#define KXHOST_IUNKNOWN_REFCOUNT                                                       \
    ULONG STDMETHODCALLTYPE AddRef() override { return AddRefImpl(); }                 \
    ULONG STDMETHODCALLTYPE Release() override { return ReleaseImpl(); }

// Copies a wide string into CoTaskMemAlloc'd memory; null when that fails.
LPWSTR TaskMemString(LPCWSTR s);

// The objects, made with one reference.
HRESULT CreateFolderObject(const std::shared_ptr<InMemoryLibrary>& lib, ItemId folder, REFIID riid, void** ppv);
HRESULT CreateItemEnum(const std::shared_ptr<InMemoryLibrary>& lib, ItemId folder, std::vector<ItemId> items,
                       REFIID riid, void** ppv);
HRESULT CreateTrackListObject(const std::shared_ptr<InMemoryLibrary>& lib, ItemId folder, REFIID riid,
                              void** ppv);
HRESULT CreatePropertiesObject(const std::shared_ptr<InMemoryLibrary>& lib, std::vector<ItemId> items,
                               REFIID riid, void** ppv);
HRESULT CreatePreviewObject(const std::shared_ptr<InMemoryLibrary>& lib, ItemId item, REFIID riid, void** ppv);
HRESULT CreateSiteObject(const std::shared_ptr<InMemoryLibrary>& lib, REFIID riid, void** ppv);
HRESULT CreateViewObject(const std::shared_ptr<InMemoryLibrary>& lib, REFIID riid, void** ppv);

}  // namespace kxhost
