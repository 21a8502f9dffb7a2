document.title = "stockrpt";
