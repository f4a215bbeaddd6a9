      * COPY MEMBER {POLREC}
       01  {POLREC}.
           05  POL-NUMBER               PIC X(12).
           05  POL-HOLDER-ID            PIC 9(8).
           05  POL-PRODUCT              PIC X(4).
           05  POL-PREMIUM              PIC S9(7)V99 COMP-3.
           05  POL-SUM-INSURED          PIC S9(11)V99 COMP-3.
           05  POL-START-DATE           PIC 9(8).
           05  POL-STATUS               PIC X(1).
