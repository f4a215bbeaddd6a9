      * COPY MEMBER {PAYREC}
       01  {PAYREC}.
           05  PAY-ID                   PIC 9(10).
           05  PAY-ACCT-NO              PIC X(10).
           05  PAY-AMOUNT               PIC S9(11)V99 COMP-3.
           05  PAY-FEE                  PIC S9(7)V99 COMP-3.
           05  PAY-NET                  PIC S9(11)V99 COMP-3.
           05  PAY-VALUE-DATE           PIC 9(8).
           05  PAY-STATUS               PIC X(1).
