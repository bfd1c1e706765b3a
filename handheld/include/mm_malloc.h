// Asked for by the headers of x86 alone.
