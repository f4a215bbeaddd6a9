      * COPY MEMBER {ERRFLDS}
       01  ERR-FIELDS.
           05  ERR-PROGRAM              PIC X(8).
           05  ERR-PARAGRAPH            PIC X(30).
           05  ERR-MESSAGE              PIC X(60).
           05  ERR-COUNT                PIC 9(4) COMP.
