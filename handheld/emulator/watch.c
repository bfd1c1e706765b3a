/* What is looked at for every block of instructions and for every access to memory: too often for
   Python. machine.py builds this and reads the structure. */
#include <stdint.h>

enum { PAGE = 4096 };

struct Watch {
    uint64_t instructions; /* executed so far */
    uint64_t limit;        /* the processor is stopped beyond so many */
    uint64_t misaligned;   /* address of an access that its size does not divide; 0: none yet */
    int (*stop)(void *processor);
    uint64_t next_tick; /* instructions at which the clock's next millisecond begins */
    uint64_t per_tick;
    uint32_t *ticks;       /* the clock, where the program can read it */
    uint64_t stack_limit;  /* of what is reserved; nothing there is memory until it is touched */
    uint64_t stack_lowest; /* first byte of the lowest page that has been */
    uint64_t skipped;      /* address of an access below the page that may come next; 0: none yet */
};

void on_block(void *processor, uint64_t address, uint32_t size, struct Watch *watch) {
    (void)address;
    watch->instructions += size / 4;
    while (watch->instructions >= watch->next_tick) {
        watch->next_tick += watch->per_tick;
        ++*watch->ticks;
    }
    if (watch->instructions > watch->limit) {
        watch->stop(processor);
    }
}

/* The system gives the stack one page more when the page below the lowest is touched. */
static void touch_stack(void *processor, uint64_t address, struct Watch *watch) {
    if (watch->stack_lowest - address > PAGE) {
        watch->skipped = address;
        watch->stop(processor);
        return;
    }
    watch->stack_lowest -= PAGE;
}

void on_access(void *processor, int kind, uint64_t address, int size, int64_t value,
               struct Watch *watch) {
    (void)kind;
    (void)value;
    if ((address & (uint64_t)(size - 1)) != 0) {
        watch->misaligned = address;
        watch->stop(processor);
    }
    if (address < watch->stack_lowest && address >= watch->stack_limit) {
        touch_stack(processor, address, watch);
    }
}
